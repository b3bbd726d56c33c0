// A project of some fifty rows in which every result set is filled, for tests of what fails.
#ifndef TALLY_TESTS_FAULTS_FAULT_PROJECT_H_
#define TALLY_TESTS_FAULTS_FAULT_PROJECT_H_

/// Eight rows in each set, four of them priced by bill items. Two disciplines, two floors, two
/// sections, nested system codes; circuits, paint, walls and insulation occur.
inline constexpr const char* kFaultProject = R"sql(
INSERT INTO all_small_index VALUES (1, 10, '给排水', '管道', '管道\给水管'),
  (2, 20, '暖通', '风管', '风管\矩形风管');
INSERT INTO all_sys_code VALUES (1, 1, '给排水', 'J', '市政'), (2, 2, '给排水', 'J\J1', ''),
  (3, 3, '暖通', 'W1', '');
INSERT INTO all_floor VALUES (1, '3,4', '3,4'), (2, '-1', '-1');
INSERT INTO all_sgd VALUES (1, '一区'), (2, '二区');
INSERT INTO sgd (id, name) VALUES (1, '一区'), (2, '二区');
INSERT INTO floor VALUES (1, '-1', '-1'), (2, '3,4', '3,4');
INSERT INTO spec VALUES (1, '给排水'), (2, '暖通');
INSERT INTO category VALUES (1, '管道', '给水管'), (2, '风管', '矩形风管');
INSERT INTO attr VALUES (1, 'DN25', replace('保温材料:岩棉;保温厚度:30;管道刷油:银粉漆,2', ';', char(10))),
  (2, 'DN100', '保温材料:岩棉' || char(10) || '保温厚度:30'),
  (3, 'S25', '风管材质:钢板' || char(10) || '风管壁厚H(mm):1');
INSERT INTO sys_code VALUES (1, 'J\J1'), (2, 'W1');
INSERT INTO component VALUES (1, 'C1'), (2, 'C2'), (3, 'C3');
INSERT INTO cal_item (id, name, unit, quantity, expression) VALUES
  (1, '管道长度', 'm', 2.5, '2.5'), (2, '管道长度', 'm', 10, '4+6'), (3, '电线长度', 'm', 4, '4');
INSERT INTO detail_cal_item VALUES (1, '管道长度', 'm', 2, 0.5, 0, 0, '2'),
  (2, '绝热保温体积', 'm3', 0.2, 0.1, 0, 0, '0.2'), (3, '外表面积', 'm2', 1.5, 0, 0, 0, '1.5'),
  (4, '展开面积', 'm2', 3, 0, 0, 0, '1*3'), (5, '风管保温体积', 'm3', 0.2, 0, 0, 0, '0.2');
INSERT INTO pj_cal_item VALUES (1, '管件', '弯头', '个', 0), (2, '阀门', '闸阀', '个', 1);
INSERT INTO setting VALUES ('is_qd_mode', '1'), ('qd_code', 'QD'), ('de_code', 'DE'),
  ('qd_de_code', 'DE'), ('qd_de_local', '本地'), ('de_local', '本地'), ('de_year', '2024');
INSERT INTO qd_item VALUES (1, '031001001001', '镀锌钢管', 'm', 'QD'), (2, '', '', '', 'QD');
INSERT INTO de_item VALUES (1, '10-1-1', '镀锌钢管安装', '10m', 'DE'), (2, '10-1-2', '安装', 'm', 'DE');
INSERT INTO qd_chapter VALUES ('QD', '0310', 1, '给排水');
INSERT INTO de_chapter VALUES ('DE', '10-1', 1, '管道\安装');
INSERT INTO qd_mark VALUES ('031001001001', 1, '材质', '钢', '');
WITH RECURSIVE number(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < 8)
INSERT INTO hz_row SELECT n, 1 + n % 2, 1 + n / 2 % 2, 1 + n % 3, 1 + (n > 4), 1 + (n > 4),
  1 + n / 4 % 2, 1 + (n > 4), 1 + n % 2 + (n > 4) FROM number;
INSERT INTO gl_row SELECT * FROM hz_row;
INSERT INTO cg_row SELECT * FROM hz_row;
INSERT INTO detail_row SELECT id, sgd, floor, component, spec, category, iif(spec = 1, attr, 3),
  sys_code, iif(spec = 1, 1 + id % 3, 4 + id % 2) FROM hz_row;
INSERT INTO pj_row SELECT id, sgd, floor, component, spec, category, attr, sys_code, 1 + id % 2
  FROM hz_row;
INSERT INTO qd_de_row SELECT id, id <= 4, sgd, floor, component, spec, category, attr, sys_code,
  cal_item, 1 + (id > 4), 1 + id % 2 FROM hz_row;
)sql";

#endif  // TALLY_TESTS_FAULTS_FAULT_PROJECT_H_
