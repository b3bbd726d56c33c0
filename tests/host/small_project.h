// A project of four consumption rows, for tests of the program.
#ifndef TALLY_TESTS_HOST_SMALL_PROJECT_H_
#define TALLY_TESTS_HOST_SMALL_PROJECT_H_

/// Water pipes of two sizes on floors -1 and 3 (which stands for 3 and 4), in two sections; one
/// electric conduit, whose attribute reads like a row marker.
inline constexpr const char* kSmallProject = R"sql(
INSERT INTO all_small_index VALUES (1, 10, '给排水', '管道', '管道\给水管'),
  (2, 20, '电气', '穿管引线', '穿管引线\配管');
INSERT INTO all_sys_code VALUES (1, 1, '给排水', 'J', '市政');
INSERT INTO all_floor VALUES (1, '3,4', '3,4'), (2, '-1', '-1');
INSERT INTO all_sgd VALUES (1, '一区'), (2, '二区');
INSERT INTO sgd (id, name) VALUES (1, '一区'), (2, '二区');
INSERT INTO floor VALUES (1, '-1', '-1'), (2, '3,4', '3,4');
INSERT INTO spec VALUES (1, '给排水'), (2, '电气');
INSERT INTO category VALUES (1, '管道', '给水管'), (2, '穿管引线', '配管');
INSERT INTO attr VALUES (1, 'DN50', '材质:钢' || char(10) || '连接:螺纹'), (2, 'DN100', ''), (3, '@F', '');
INSERT INTO sys_code VALUES (1, 'J'), (2, 'W1');
INSERT INTO component VALUES (1, 'C1'), (2, 'C2');
INSERT INTO cal_item (id, name, unit, quantity, expression) VALUES
  (1, '管道长度', 'm', 2.5, '2.5'), (2, '管道长度', 'm', 10, '10'), (3, '电线长度', 'm', 4, '4');
INSERT INTO hz_row VALUES (1, 1, 1, 1, 1, 1, 1, 1, 1), (2, 2, 2, 2, 1, 1, 1, 1, 1),
  (3, 1, 2, 1, 1, 1, 2, 1, 2), (4, 1, 1, 1, 2, 2, 3, 2, 3);
)sql";

#endif  // TALLY_TESTS_HOST_SMALL_PROJECT_H_
