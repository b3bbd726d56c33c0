#include "host/demo_building.h"

#include <algorithm>

namespace demo {

// The rows of the plain example follow from the order and the numbers of these tables. Examples,
// tests and pictures show those rows, so nothing here may change.

const char* const kBillLibrary = "QD2024";
const char* const kForeignBillLibrary = "QD2013";
const char* const kQuotaLibrary = "DE2024";
const char* const kForeignQuotaLibrary = "DE2016";

namespace {

constexpr const char* kDisciplines[] = {"给排水", "电气", "暖通", "消防", "弱电"};
constexpr const char* kSections[] = {"一区", "二区"};

struct SPlainFloor {
  const char* name;
  const char* text;
  bool plant;
};

// "3,7" is drawn once and built five times; "4" and "5" hold what single floors of it have beyond
// that.
constexpr SPlainFloor kFloors[] = {
    {"-1", "-1", true},  {"1", "1", false}, {"2", "2", false}, {"3,7", "3,7", false},
    {"4", "4/6", false}, {"5", "5", false}, {"8", "8", false}, {"9", "9", true},
};

// ---- Systems ----------------------------------------------------------------------------------

enum EGroup : std::size_t {
  kWater,
  kWaterLow,
  kWaterHigh,
  kHotWater,
  kSewage,
  kRain,
  kLighting,
  kEmergency,
  kSockets,
  kPower,
  kEarthing,
  kSupplyAir,
  kExhaust,
  kSmoke,
  kChilled,
  kCondensate,
  kSprinkler,
  kHydrant,
  kGas,
  kCabling,
  kVideo,
  kAlarm,
};

constexpr SSystemGroup kSystemGroups[] = {
    {kPlumbing, "给水系统", "生活给水", "", 1},
    {kPlumbing, "给水系统\\低区", "市政直供", "JL-", 2},
    {kPlumbing, "给水系统\\高区", "变频加压", "GJL-", 2},
    {kPlumbing, "热水系统", "集中热水", "RJL-", 2},
    {kPlumbing, "排水系统\\污水", "", "WL-", 2},
    {kPlumbing, "雨水系统", "重力流", "", 1, false},
    {kElectrical, "照明系统\\正常照明", "", "N", 3},
    {kElectrical, "照明系统\\应急照明", "集中控制型", "E", 2},
    {kElectrical, "插座系统\\办公插座", "", "C", 2},
    {kElectrical, "动力系统", "风机水泵", "AP", 2},
    {kElectrical, "防雷接地系统", "二类防雷", "", 1},
    {kVentilation, "送风系统", "新风", "SF-", 2},
    {kVentilation, "排风系统\\卫生间排风", "", "PF-", 1},
    {kVentilation, "排烟系统", "机械排烟", "PY-", 2},
    {kVentilation, "空调水系统\\冷冻水", "7/12℃", "LD-", 2},
    {kVentilation, "空调水系统\\冷凝水", "", "LN-", 1},
    {kFire, "喷淋系统\\低区", "湿式", "ZP-", 2},
    {kFire, "消火栓系统", "临时高压", "XL-", 2},
    {kFire, "气体灭火系统", "七氟丙烷", "", 1, false},
    {kLowCurrent, "综合布线系统", "六类", "D", 2},
    {kLowCurrent, "安防系统\\视频监控", "", "V", 2},
    {kLowCurrent, "火灾报警系统", "总线制", "", 1},
};

// ---- Sizes ------------------------------------------------------------------------------------

/// Perimeter in 0.1 mm of a circle whose diameter is given in 0.1 mm.
constexpr int Round(int diameter) {
  return 31416 * diameter / 10000;
}

/// Perimeter in 0.1 mm of a rectangle given in mm.
constexpr int Rect(int width, int height) {
  return 20 * (width + height);
}

constexpr SSize kSmallPipes[] = {{"DN15", Round(213)}, {"DN20", Round(269)}, {"DN25", Round(337)},
                                 {"DN32", Round(424)}, {"DN40", Round(483)}, {"DN50", Round(603)}};
constexpr SSize kLargePipes[] = {{"DN65", Round(761)},
                                 {"DN80", Round(889)},
                                 {"DN100", Round(1143)},
                                 {"DN125", Round(1397)},
                                 {"DN150", Round(1683)}};
constexpr SSize kDrains[] = {
    {"DN50", Round(500)}, {"DN75", Round(750)}, {"DN100", Round(1100)}, {"DN150", Round(1600)}};
constexpr SSize kSmallDucts[] = {
    {"200*120", Rect(200, 120)}, {"320*200", Rect(320, 200)}, {"400*250", Rect(400, 250)}};
constexpr SSize kLargeDucts[] = {
    {"500*320", Rect(500, 320)}, {"800*400", Rect(800, 400)}, {"1000*500", Rect(1000, 500)}};
constexpr SSize kHoses[] = {{"φ150", Round(1500)}, {"φ200", Round(2000)}};
constexpr SSize kConduits[] = {{"16", Round(160)}, {"20", Round(200)}, {"25", Round(250)}};
constexpr SSize kTrays[] = {
    {"100*50", Rect(100, 50)}, {"200*100", Rect(200, 100)}, {"300*100", Rect(300, 100)}};
constexpr SSize kWires[] = {{"2.5", Round(41)}, {"4", Round(48)}, {"6", Round(53)}};
constexpr SSize kCables[] = {
    {"3*4", Round(124)}, {"4*25+1*16", Round(284)}, {"4*70+1*35", Round(426)}};
constexpr SSize kBusbars[] = {{"250A", Rect(120, 90)}, {"630A", Rect(160, 120)}};
constexpr SSize kDataCables[] = {{"UTP-CAT6", Round(62)}, {"RVV-2*1.0", Round(70)}};
constexpr SSize kStrips[] = {{"-25*4", Rect(25, 4)}, {"-40*4", Rect(40, 4)}};
constexpr SSize kSupports[] = {{"L30*3", 1373}, {"L40*4", 2422}, {"[8", 8045}};
constexpr SSize kSleeves[] = {{"DN80", 1660}, {"DN150", 3520}};
constexpr SSize kBlocks[] = {{"δ=50", 45}, {"δ=80", 62}};
constexpr SSize kTanks[] = {{"2000*2000*1500", 800}, {"3000*2000*2000", 1280}};
constexpr SSize kValves[] = {{"DN50", 6200}, {"DN100", 18500}};
constexpr SSize kBasins[] = {{"台式", 1000}, {"壁挂式", 1000}};
constexpr SSize kLamps[] = {{"LED 18W", 1000}, {"LED 36W", 1000}};
constexpr SSize kBoxes[] = {{"600*800*200", 1000}, {"800*1800*400", 1000}};
constexpr SSize kOutlets[] = {{"300*300", 1000}, {"600*200", 1000}};
constexpr SSize kUnits[] = {{"FP-68", 1000}, {"FP-136", 1000}};
constexpr SSize kHeads[] = {{"68℃", 1000}};
constexpr SSize kStandard[] = {{"标准型", 1000}};

// ---- Calculation items ------------------------------------------------------------------------

constexpr const char* kPaintCode = "12-2-1";
constexpr const char* kPaintName = "管道刷油";
constexpr const char* kWrapCode = "12-4-30";
constexpr const char* kWrapName = "绝热保温安装";
constexpr const char* kJacketCode = "12-4-95";
constexpr const char* kJacketName = "保护层安装";
constexpr const char* kWireCode = "4-12-6";
constexpr const char* kWireName = "管内穿线";
constexpr const char* kReserveCode = "4-12-90";
constexpr const char* kReserveName = "预留线敷设";

constexpr SItemRule kInsulatedPipe[] = {
    {"管道长度", "m", EMeasure::kLength, 0, "", ""},
    {"外表面积", "m2", EMeasure::kSurface, 0, kPaintCode, kPaintName},
    {"绝热保温体积", "m3", EMeasure::kInsulation, 0, kWrapCode, kWrapName},
    {"保护层面积", "m2", EMeasure::kJacket, 0, kJacketCode, kJacketName},
};
constexpr SItemRule kBarePipe[] = {
    {"管道长度", "m", EMeasure::kLength, 0, "", ""},
    {"外表面积", "m2", EMeasure::kSurface, 0, kPaintCode, kPaintName},
    {"支架数量", "个", EMeasure::kPieces, 2, "10-11-15", "管道支架安装"},
};
constexpr SItemRule kInsulatedDuct[] = {
    {"展开面积", "m2", EMeasure::kSurface, 0, "", ""},
    {"风管长度", "m", EMeasure::kLength, 0, "7-2-80", "风管检查孔"},
    {"风管保温体积", "m3", EMeasure::kInsulation, 0, kWrapCode, kWrapName},
    {"保护层面积", "m2", EMeasure::kJacket, 0, kJacketCode, kJacketName},
};
constexpr SItemRule kBareDuct[] = {
    {"展开面积", "m2", EMeasure::kSurface, 0, "", ""},
    {"风管长度", "m", EMeasure::kLength, 0, "7-2-80", "风管检查孔"},
    {"外表面积", "m2", EMeasure::kSurface, 0, "12-2-8", "风管刷油"},
};
constexpr SItemRule kFlexibleDuct[] = {
    {"风管长度", "m", EMeasure::kLength, 0, "", ""},
    {"展开面积", "m2", EMeasure::kSurface, 0, "7-2-98", "软管材料"},
    {"风管保温体积", "m3", EMeasure::kInsulation, 0, kWrapCode, kWrapName},
};
constexpr SItemRule kDuctSleeve[] = {
    {"展开面积", "m2", EMeasure::kSurface, 0, "", ""},
    {"风管长度", "m", EMeasure::kLength, 0, "7-2-80", "风管检查孔"},
    {"构件数量", "个", EMeasure::kPieces, 1, "7-2-99", "套管填堵"},
};
constexpr SItemRule kWiredConduit[] = {
    {"构件长度", "m", EMeasure::kLength, 0, "", ""},
    {"电线长度", "m", EMeasure::kTimesLength, 3000, kWireCode, kWireName},
    {"预留长度", "m", EMeasure::kPieces, 1, kReserveCode, kReserveName},
};
constexpr SItemRule kElectricalHose[] = {
    {"管道长度", "m", EMeasure::kLength, 0, "", ""},
    {"电线长度", "m", EMeasure::kTimesLength, 3000, kWireCode, kWireName},
};
constexpr SItemRule kElectricalTray[] = {
    {"桥架长度", "m", EMeasure::kLength, 0, "", ""},
    {"展开面积", "m2", EMeasure::kSurface, 0, "4-9-75", "桥架防火涂料"},
    {"接地跨接", "处", EMeasure::kPieces, 2, "4-10-9", "桥架跨接地线"},
};
constexpr SItemRule kTrunking[] = {
    {"线槽长度", "m", EMeasure::kLength, 0, "", ""},
    {"展开面积", "m2", EMeasure::kSurface, 0, "4-9-75", "桥架防火涂料"},
    {"接地跨接", "处", EMeasure::kPieces, 2, "4-10-9", "桥架跨接地线"},
};
constexpr SItemRule kLaidCable[] = {
    {"构件长度", "m", EMeasure::kLength, 0, "", ""},
    {"预留长度", "m", EMeasure::kPieces, 3, kReserveCode, kReserveName},
    {"电缆头", "个", EMeasure::kPieces, 2, "4-8-120", "电缆终端头制作安装"},
};
constexpr SItemRule kLine[] = {{"构件长度", "m", EMeasure::kLength, 0, "", ""}};
constexpr SItemRule kSupport[] = {
    {"构件重量", "kg", EMeasure::kBySize, 0, "", ""},
    {"刷油面积", "m2", EMeasure::kTimesSize, 47, "12-1-7", "支架刷油"},
    {"构件数量", "个", EMeasure::kPieces, 1, "10-11-9", "支架打孔固定"},
};
constexpr SItemRule kPadding[] = {
    {"构件面积", "m2", EMeasure::kBySize, 0, "", ""},
    {"构件数量", "个", EMeasure::kPieces, 1, "10-11-9", "支架打孔固定"},
};
constexpr SItemRule kTank[] = {
    {"构件数量", "台", EMeasure::kPieces, 1, "", ""},
    {"保温体积", "m3", EMeasure::kBySize, 0, "12-4-60", "设备绝热安装"},
    {"保护层面积", "m2", EMeasure::kTimesSize, 26000, kJacketCode, kJacketName},
};
constexpr SItemRule kValve[] = {
    {"构件数量", "个", EMeasure::kPieces, 1, "", ""},
    {"构件重量", "kg", EMeasure::kBySize, 0, "10-5-90", "阀门搬运"},
};
constexpr SItemRule kPiece[] = {{"构件数量", "个", EMeasure::kPieces, 1, "", ""}};
constexpr SItemRule kDevice[] = {{"设备数量", "台", EMeasure::kPieces, 1, "", ""}};
constexpr SItemRule kFlange[] = {{"法兰数量", "副", EMeasure::kPieces, 1, "", ""}};
constexpr SItemRule kCableHead[] = {{"电缆头", "个", EMeasure::kPieces, 1, "", ""}};
constexpr SItemRule kChase[] = {{"沟槽长度", "m", EMeasure::kLength, 0, "", ""}};
constexpr SItemRule kOther[] = {
    {"工程量", "项", EMeasure::kPieces, 1, "", ""},
    {"构件数量", "个", EMeasure::kPieces, 1, "10-11-99", "孔洞封堵"},
};

// ---- Fittings ---------------------------------------------------------------------------------

constexpr SFitting kThreaded[] = {{"弯头", "螺纹弯头"}, {"三通", "螺纹三通"}, {"管箍", "螺纹管箍"}};
constexpr SFitting kGrooved[] = {
    {"弯头", "沟槽弯头"}, {"卡箍", "沟槽卡箍"}, {"三通", "机械三通"}, {"四通", "机械四通"}};
constexpr SFitting kPressed[] = {{"弯头", "卡压弯头"}, {"三通", "卡压三通"}};
constexpr SFitting kGlued[] = {{"弯头", "粘接弯头"}, {"三通", "顺水三通"}, {"伸缩节", "伸缩节"}};
constexpr SFitting kDuctwork[] = {{"弯头", "风管弯头"}, {"三通", "风管三通"}, {"变径", "风管变径"}};
constexpr SFitting kTraywork[] = {{"弯通", "水平弯通"}, {"三通", "水平三通"}};
constexpr SFitting kConduitwork[] = {{"接头", "管接头"}, {"锁母", "盒接头"}};

// ---- Parts ------------------------------------------------------------------------------------

// clang-format off
constexpr SPart kParts[] = {
    // Plumbing.
    {kPlumbing, "管道", "给水管", "衬塑钢管（螺纹式） ",
     "材质:衬塑钢管\n连接方式:螺纹连接\n保温材料:橡塑海绵\n保温厚度:20mm\n管道刷油:银粉漆,2", kSmallPipes, 20,
     kWater, 3, kInsulatedPipe, kThreaded, {"3101001", "给水管道", 1}, {"10-1-", 12, "室内衬塑钢管（螺纹连接）"}, 8},
    {kPlumbing, "管道", "给水立管", "衬塑钢管 ",
     "材质:衬塑钢管\n连接方式:沟槽连接\n保温材料:橡塑海绵\n保温厚度:30mm\n管道刷油:红丹防锈漆,2;银粉漆,1", kLargePipes, 30,
     kWaterLow, 2, kInsulatedPipe, kGrooved, {"3101002", "给水立管", 1}, {"10-1-", 40, "室内衬塑钢管（沟槽连接）"}, 7},
    {kPlumbing, "管道", "热水管", "薄壁不锈钢管 ",
     "材质:薄壁不锈钢管\n连接方式:卡压连接\n保温材料:离心玻璃棉\n保温厚度:40mm", kSmallPipes, 40,
     kHotWater, 1, kInsulatedPipe, kPressed, {"3101003", "热水管道", 1}, {"10-1-", 70, "室内薄壁不锈钢管（卡压连接）"}, 7},
    {kPlumbing, "管道", "排水管", "UPVC排水管 ", "材质:UPVC\n连接方式:粘接", kDrains, 0,
     kSewage, 1, kBarePipe, kGlued, {"3101004", "排水管道", 0}, {"10-2-", 5, "室内塑料排水管（粘接）"}, 4},
    {kPlumbing, "管道", "雨水管", "机制铸铁管 ", "材质:铸铁\n连接方式:机械接口\n管道刷油:沥青漆,2", kDrains, 0,
     kRain, 1, kBarePipe, kGlued, {"3101005", "雨水管道", 1}, {"10-2-", 30, "室内铸铁雨水管（机械接口）"}, 2},
    {kPlumbing, "阀门法兰", "闸阀", "Z15W ", "材质:铜\n连接方式:法兰连接", kValves, 0,
     kWaterLow, 2, kValve, {}, {"3103001", "法兰阀门", 1}, {"10-5-", 30, "法兰阀门安装"}, 1},
    {kPlumbing, "阀门法兰", "法兰", "碳钢平焊法兰 ", "材质:碳钢\n压力等级:1.6MPa", kValves, 0,
     kWaterLow, 2, kFlange, {}, {"3103002", "法兰", 1}, {"10-5-", 150, "碳钢平焊法兰安装"}, 1, EZone::kAnywhere, false},
    {kPlumbing, "卫生器具", "洗脸盆", "洗脸盆 ", "材质:陶瓷\n安装方式:台下", kBasins, 0,
     kSewage, 1, kPiece, {}, {"3104001", "洗脸盆", 1}, {"10-6-", 14, "洗脸盆安装"}, 1, EZone::kRooms},
    {kPlumbing, "卫生器具", "坐便器", "坐便器 ", "材质:陶瓷\n冲洗方式:水箱", kStandard, 0,
     kSewage, 1, kPiece, {}, {"3104002", "大便器", 0}, {"10-6-", 40, "坐式大便器安装"}, 1, EZone::kRooms},
    {kPlumbing, "设备", "水箱", "不锈钢水箱 ", "材质:不锈钢\n保温材料:聚氨酯\n保温厚度:50mm", kTanks, 50,
     kWaterHigh, 1, kTank, {}, {"3106001", "水箱", 1}, {"10-8-", 3, "整体水箱安装"}, 3, EZone::kPlant},
    {kPlumbing, "BIM支架", "支吊架", "角钢支架 ", "材质:Q235\n支架刷油:红丹防锈漆,2;调和漆,2", kSupports, 0,
     kWaterLow, 4, kSupport, {}, {"3102001", "管道支架", 1}, {"10-11-", 1, "管道支架制作安装"}, 7, EZone::kAnywhere, false},
    {kPlumbing, "BIM支架", "管卡", "管卡 ", "材质:镀锌扁钢", kSleeves, 0,
     kWaterLow, 2, kPiece, {}, {"3102002", "成品管卡", 0}, {"10-11-", 20, "成品管卡安装"}, 1, EZone::kAnywhere, false},
    {kPlumbing, "BIM附件", "套管", "钢套管 ", "套管类型:刚性防水套管", kSleeves, 0,
     kWaterLow, 4, kValve, {}, {"3102003", "套管", 1}, {"10-11-", 60, "刚性防水套管安装"}, 2, EZone::kAnywhere, false},
    {kPlumbing, "零星构件", "管道沟槽", "墙体剔槽 ", "", kStandard, 0,
     kWaterLow, 1, kChase, {}, {"3108001", "剔槽", 0}, {"10-11-", 90, "墙面剔槽"}, 1, EZone::kRooms, false},
    {kPlumbing, "其它项目", "开孔", "楼板开孔 ", "", kSleeves, 0,
     kSewage, 1, kOther, {}, {"9901001", "楼板开孔", 1}, {"99-1-", 1, "楼板开孔"}, 1, EZone::kAnywhere, false, false},

    // Electrical.
    {kElectrical, "管线", "导管", "JDG", "材质:紧定式钢管\n敷设方式:暗敷", kConduits, 0,
     kLighting, 3, kWiredConduit, kConduitwork, {"3201001", "配管", 1}, {"4-12-", 100, "紧定式钢导管敷设"}, 8},
    {kElectrical, "管线", "软管", "金属软管 ", "材质:可挠金属\n连接方式:专用接头", kConduits, 0,
     kLighting, 2, kElectricalHose, kConduitwork, {"3201002", "金属软管", 0}, {"4-12-", 130, "金属软管敷设"}, 2},
    {kElectrical, "管线", "线槽", "金属线槽 ", "材质:镀锌钢板", kTrays, 0,
     kPower, 1, kWiredConduit, kTraywork, {"3201003", "线槽", 1}, {"4-12-", 140, "金属线槽敷设"}, 2},
    {kElectrical, "管线", "导线", "BV-", "材质:铜芯\n敷设方式:管内", kWires, 0,
     kLighting, 3, kLine, {}, {"3201004", "配线", 1}, {"4-12-", 3, "管内穿铜芯线"}, 1},
    {kElectrical, "电缆桥架", "桥架", "槽式桥架 ", "材质:镀锌钢板\n样式:槽式", kTrays, 0,
     kPower, 1, kElectricalTray, kTraywork, {"3202001", "桥架", 2}, {"4-9-", 60, "钢制槽式桥架安装"}, 3},
    {kElectrical, "电缆桥架", "电缆", "YJV-", "材质:铜芯交联聚乙烯\n敷设方式:桥架内", kCables, 0,
     kPower, 1, kLaidCable, {}, {"3202002", "电力电缆", 1}, {"4-8-", 80, "铜芯电力电缆敷设"}, 4},
    {kElectrical, "电缆桥架", "电缆头", "干包终端头 ", "材质:铜芯", kCables, 0,
     kPower, 1, kCableHead, {}, {"3202003", "电缆头", 0}, {"4-8-", 130, "干包电缆终端头"}, 1, EZone::kAnywhere, false},
    {kElectrical, "电缆桥架", "母线·馈线", "密集母线 ", "材质:铜\n防护等级:IP54", kBusbars, 0,
     kPower, 1, kLine, {}, {"3202004", "母线槽", 1}, {"4-3-", 11, "低压封闭母线槽安装"}, 1},
    {kElectrical, "照明器具", "灯具", "平板灯 ", "安装方式:嵌入式", kLamps, 0,
     kLighting, 2, kPiece, {}, {"3203001", "嵌入式灯具", 1}, {"4-14-", 20, "嵌入式灯具安装"}, 2, EZone::kRooms},
    {kElectrical, "照明器具", "开关", "单控开关 ", "安装方式:暗装", kStandard, 0,
     kLighting, 1, kPiece, {}, {"3203002", "照明开关", 1}, {"4-14-", 370, "照明开关安装"}, 1, EZone::kRooms},
    {kElectrical, "配电箱柜", "配电箱", "AL ", "安装方式:挂墙", kBoxes, 0,
     kLighting, 4, kPiece, {}, {"3204001", "配电箱", 1}, {"4-2-", 76, "成套配电箱安装"}, 1},
    {kElectrical, "防雷接地", "避雷带", "热镀锌扁钢 ", "材质:热镀锌扁钢", kStrips, 0,
     kEarthing, 1, kLine, {}, {"3205001", "避雷网", 1}, {"4-10-", 45, "避雷网安装"}, 3, EZone::kPlant},
    {kElectrical, "防雷接地", "接地母线", "热镀锌扁钢 ", "材质:热镀锌扁钢", kStrips, 0,
     kEarthing, 1, kLine, {}, {"3205002", "接地母线", 1}, {"4-10-", 60, "户内接地母线敷设"}, 1},
    {kElectrical, "附件", "接线盒", "86型接线盒 ", "材质:钢", kStandard, 0,
     kSockets, 1, kPiece, {}, {"3201005", "接线盒", 1, true}, {"4-12-", 190, "接线盒安装", true}, 1, EZone::kRooms, false, false},
    {kElectrical, "BIM支架", "支吊架", "桥架支架 ", "材质:Q235\n支架刷油:红丹防锈漆,1", kSupports, 0,
     kPower, 1, kSupport, {}, {"3202005", "桥架支架", 1}, {"4-7-", 5, "桥架支架制作安装"}, 6, EZone::kAnywhere, false},

    // Heating and ventilation.
    {kVentilation, "风管", "送风管", "镀锌钢板风管 ",
     "风管材质:镀锌钢板\n风管壁厚H(mm):0.6\n连接方式:共板法兰\n保温材料:橡塑海绵\n保温厚度:25mm", kSmallDucts, 25,
     kSupplyAir, 1, kInsulatedDuct, kDuctwork, {"3301001", "碳钢通风管道", 2}, {"7-2-", 6, "镀锌薄钢板矩形风管（δ=1.2mm以内咬口）"}, 7},
    {kVentilation, "风管", "空调风管", "镀锌钢板风管 ",
     "风管材质:镀锌钢板\n风管壁厚H(mm):0.75\n连接方式:角钢法兰\n保温材料:离心玻璃棉\n保温厚度:30mm", kLargeDucts, 30,
     kSupplyAir, 1, kInsulatedDuct, kDuctwork, {"3301002", "空调通风管道", 1}, {"7-2-", 12, "镀锌薄钢板矩形风管（角钢法兰）"}, 7},
    {kVentilation, "风管", "排风管", "不锈钢风管 ", "风管材质:不锈钢板\n风管壁厚H(mm):0.5\n连接方式:焊接", kSmallDucts, 0,
     kExhaust, 1, kBareDuct, kDuctwork, {"3301003", "不锈钢通风管道", 0}, {"7-2-", 40, "不锈钢板矩形风管"}, 2},
    {kVentilation, "风管", "排烟管", "钢板风管 ", "风管材质:冷轧钢板\n风管壁厚H(mm):1.2\n连接方式:角钢法兰", kLargeDucts, 0,
     kSmoke, 1, kBareDuct, kDuctwork, {"3301004", "排烟管道", 1}, {"7-2-", 30, "薄钢板矩形风管（焊接）"}, 2},
    {kVentilation, "风管", "柔性风管", "铝箔软管 ", "风管材质:铝箔\n保温材料:离心玻璃棉\n保温厚度:25mm", kHoses, 25,
     kSupplyAir, 1, kFlexibleDuct, {}, {"3301005", "柔性软风管", 1}, {"7-2-", 90, "柔性软风管安装"}, 2},
    {kVentilation, "水管", "冷冻水管", "无缝钢管（沟槽式） ",
     "材质:无缝钢管\n连接方式:沟槽连接\n保温材料:橡塑海绵\n保温厚度:40mm\n管道刷油:红丹防锈漆,2", kLargePipes, 40,
     kChilled, 1, kInsulatedPipe, kGrooved, {"3302001", "空调水管", 1}, {"10-3-", 20, "空调水无缝钢管安装"}, 8},
    {kVentilation, "水管", "冷凝水管", "镀锌钢管 ",
     "材质:镀锌钢管\n连接方式:螺纹连接\n保温材料:橡塑海绵\n保温厚度:15mm\n管道刷油:银粉漆,1", kSmallPipes, 15,
     kCondensate, 1, kInsulatedPipe, kThreaded, {"3302002", "冷凝水管", 1}, {"10-3-", 50, "空调凝结水管安装"}, 7},
    {kVentilation, "水附件", "蝶阀", "D71X ", "材质:球墨铸铁\n连接方式:对夹", kValves, 0,
     kChilled, 1, kValve, {}, {"3302003", "蝶阀", 1}, {"10-5-", 60, "对夹式蝶阀安装"}, 1},
    {kVentilation, "水附件", "法兰", "碳钢法兰 ", "材质:碳钢", kValves, 0,
     kChilled, 1, kFlange, {}, {"3302004", "碳钢法兰", 1}, {"10-5-", 150, "碳钢平焊法兰安装"}, 1, EZone::kAnywhere, false},
    {kVentilation, "风口", "百叶风口", "双层百叶 ", "材质:铝合金", kOutlets, 0,
     kSupplyAir, 2, kPiece, {}, {"3303001", "百叶风口", 1}, {"7-3-", 40, "百叶风口安装"}, 1, EZone::kRooms},
    {kVentilation, "风部件", "防火阀", "70℃防火阀 ", "材质:镀锌钢板", kOutlets, 0,
     kSupplyAir, 3, kDevice, {}, {"3303002", "防火阀", 1}, {"7-3-", 20, "防火阀安装"}, 1},
    {kVentilation, "风设备", "风机盘管", "风机盘管 ", "安装方式:吊装", kUnits, 0,
     kChilled, 1, kDevice, {}, {"3304001", "风机盘管", 0}, {"7-1-", 30, "风机盘管安装"}, 1, EZone::kRooms},
    {kVentilation, "水暖设备", "水箱", "膨胀水箱 ", "材质:碳钢\n保温材料:聚氨酯\n保温厚度:30mm", kTanks, 30,
     kChilled, 1, kTank, {}, {"3304002", "膨胀水箱", 1}, {"10-8-", 12, "膨胀水箱安装"}, 3, EZone::kPlant},
    {kVentilation, "BIM附件", "风管套管", "穿墙套管 ", "套管材质:热轧钢板\n板材厚度:2.0\n填料:岩棉", kSmallDucts, 0,
     kSupplyAir, 3, kDuctSleeve, {}, {"3303003", "风管套管", 1}, {"7-2-", 94, "风管穿墙套管安装"}, 5, EZone::kAnywhere, false},
    {kVentilation, "BIM支架", "支吊架", "风管吊架 ", "材质:Q235\n支架刷油:红丹防锈漆,2;灰调和漆,1", kSupports, 0,
     kSupplyAir, 4, kSupport, {}, {"3303004", "风管支吊架", 1}, {"7-4-", 8, "风管支吊架制作安装"}, 7, EZone::kAnywhere, false},
    {kVentilation, "BIM支架", "垫木", "防腐垫木 ", "材质:硬木", kBlocks, 0,
     kChilled, 1, kPadding, {}, {"3303005", "垫木", 1, true}, {"10-11-", 70, "木垫式管架"}, 1, EZone::kAnywhere, false, false},

    // Fire protection.
    {kFire, "管网", "喷淋管", "镀锌钢管（螺纹式） ", "材质:热镀锌钢管\n连接方式:螺纹连接\n管道刷油:红色调和漆,2", kSmallPipes, 0,
     kSprinkler, 1, kBarePipe, kThreaded, {"3401001", "水喷淋钢管", 1}, {"9-1-", 3, "水喷淋镀锌钢管（螺纹连接）"}, 6},
    {kFire, "管网", "喷淋干管", "镀锌钢管 机械接口 ", "材质:热镀锌钢管\n连接方式:沟槽连接\n管道刷油:红丹防锈漆,1;红色调和漆,2", kLargePipes, 0,
     kSprinkler, 1, kBarePipe, kGrooved, {"3401002", "喷淋干管", 1}, {"9-1-", 20, "水喷淋镀锌钢管（沟槽连接）"}, 3},
    {kFire, "管网", "消火栓管", "镀锌钢管（沟槽式） ",
     "材质:热镀锌钢管\n连接方式:沟槽连接\n保温材料:离心玻璃棉\n保温厚度:30mm\n管道刷油:红丹防锈漆,2;红色调和漆,1", kLargePipes, 30,
     kHydrant, 1, kInsulatedPipe, kGrooved, {"3401003", "消火栓钢管", 0}, {"9-1-", 40, "消火栓镀锌钢管（沟槽连接）"}, 7},
    {kFire, "喷头", "下垂型喷头", "ZSTX-15 ", "连接方式:螺纹连接", kHeads, 0,
     kSprinkler, 1, kPiece, {}, {"3401004", "水喷淋喷头", 1}, {"9-1-", 60, "水喷淋喷头安装"}, 3},
    {kFire, "消火栓", "室内消火栓", "SN65 ", "安装方式:明装", kStandard, 0,
     kHydrant, 1, kPiece, {}, {"3401005", "室内消火栓", 1}, {"9-1-", 75, "室内消火栓安装"}, 1},
    {kFire, "阀门法兰", "信号蝶阀", "ZSXF ", "连接方式:沟槽连接", kValves, 0,
     kSprinkler, 2, kValve, {}, {"3401006", "信号蝶阀", 1}, {"10-5-", 70, "沟槽阀门安装"}, 1},
    {kFire, "消防设备", "气瓶", "七氟丙烷 ", "容积:70L", kStandard, 0,
     kGas, 1, kDevice, {}, {"3402001", "贮存装置", 1}, {"9-2-", 5, "贮存装置安装"}, 1},
    {kFire, "储存装置", "水箱", "消防水箱 ", "材质:不锈钢\n保温材料:聚氨酯\n保温厚度:50mm", kTanks, 50,
     kHydrant, 1, kTank, {}, {"3402002", "消防水箱", 0}, {"10-8-", 7, "消防水箱安装"}, 3, EZone::kPlant},
    {kFire, "BIM支架", "支吊架", "喷淋支架 ", "材质:Q235\n支架刷油:红丹防锈漆,2;红色调和漆,1", kSupports, 0,
     kSprinkler, 2, kSupport, {}, {"3401007", "消防管道支架", 1}, {"10-11-", 4, "消防管道支架制作安装"}, 7, EZone::kAnywhere, false},

    // Low current.
    {kLowCurrent, "穿管引线", "配管", "PC", "材质:PVC\n敷设方式:暗敷", kConduits, 0,
     kCabling, 3, kWiredConduit, kConduitwork, {"3501001", "弱电配管", 1}, {"5-2-", 10, "刚性塑料管敷设"}, 5},
    {kLowCurrent, "穿管引线", "软管", "包塑软管 ", "材质:包塑金属", kConduits, 0,
     kVideo, 1, kLine, kConduitwork, {"3501002", "弱电软管", 0}, {"5-2-", 25, "包塑金属软管敷设", true}, 1},
    {kLowCurrent, "穿管引线", "配线", "", "材质:铜芯", kDataCables, 0,
     kCabling, 2, kLine, {}, {"3501003", "双绞线缆", 1}, {"5-2-", 40, "管内穿放双绞线缆"}, 1},
    {kLowCurrent, "线槽桥架", "桥架", "弱电桥架 ", "材质:镀锌钢板\n样式:槽式", kTrays, 0,
     kCabling, 1, kElectricalTray, kTraywork, {"3502001", "弱电桥架", 2}, {"5-1-", 5, "弱电桥架安装"}, 3},
    {kLowCurrent, "线槽桥架", "线槽", "弱电线槽 ", "材质:镀锌钢板\n样式:封闭", kTrays, 0,
     kVideo, 1, kTrunking, kTraywork, {"3502002", "弱电线槽", 0}, {"5-1-", 15, "弱电线槽安装"}, 2},
    {kLowCurrent, "线槽桥架", "电缆", "", "材质:铜芯", kDataCables, 0,
     kCabling, 2, kLaidCable, {}, {"3502003", "弱电电缆", 1}, {"5-2-", 60, "桥架内布放线缆"}, 3},
    {kLowCurrent, "设备", "摄像机", "半球摄像机 ", "安装方式:吸顶", kStandard, 0,
     kVideo, 1, kPiece, {}, {"3503001", "监控摄像设备", 1}, {"5-6-", 80, "半球摄像机安装"}, 1, EZone::kRooms},
    {kLowCurrent, "箱柜", "弱电箱", "综合信息箱 ", "安装方式:嵌墙", kBoxes, 0,
     kCabling, 1, kPiece, {}, {"3503002", "弱电箱", 1}, {"5-2-", 90, "弱电箱安装"}, 1},
    {kLowCurrent, "附件", "信息插座", "双口信息插座 ", "安装方式:暗装", kStandard, 0,
     kCabling, 1, kPiece, {}, {"3503003", "信息插座", 0}, {"5-2-", 95, "信息插座安装"}, 1, EZone::kRooms},
    {kLowCurrent, "BIM支架", "支吊架", "弱电支架 ", "材质:Q235\n支架刷油:红丹防锈漆,1;灰调和漆,1", kSupports, 0,
     kCabling, 2, kSupport, {}, {"3502004", "弱电支架", 1}, {"4-7-", 5, "桥架支架制作安装"}, 5, EZone::kAnywhere, false},
};
// clang-format on

// ---- Bill and quota libraries -----------------------------------------------------------------

constexpr SChapter kBillChapters[] = {
    {"3101", 1, "给排水管道"},    {"3102", 2, "支架及其他"},      {"3103", 3, "管道附件"},
    {"3104", 4, "卫生器具"},      {"3106", 5, "给排水设备"},      {"3108", 6, "附属工程"},
    {"3201", 11, "配管配线"},     {"3202", 12, "桥架及电缆"},     {"3203", 13, "照明器具"},
    {"3204", 14, "控制设备"},     {"3205", 15, "防雷及接地"},     {"3301", 21, "通风管道制作安装"},
    {"3302", 22, "空调水管道"},   {"3303", 23, "通风管道部件"},   {"3304", 24, "通风空调设备"},
    {"3401", 31, "水灭火系统"},   {"3402", 32, "气体灭火系统"},   {"3501", 41, "弱电配管配线"},
    {"3502", 42, "弱电线槽桥架"}, {"3503", 43, "弱电设备及器具"},
};

constexpr SChapter kQuotaChapters[] = {
    {"10-1-", 101, "给水管道\\室内管道"},
    {"10-2-", 102, "排水管道\\室内管道"},
    {"10-3-", 103, "空调水管道\\室内管道"},
    {"10-5-", 105, "管道附件\\阀门法兰"},
    {"10-6-", 106, "卫生器具\\成套安装"},
    {"10-8-", 108, "设备\\水箱"},
    {"10-11-", 111, "支架及其他\\支架制作安装"},
    {"12-", 120, "刷油绝热工程\\其他"},
    {"12-1-", 121, "支架刷油工程\\型钢"},
    {"12-2-", 122, "刷油工程\\管道设备"},
    {"12-4-", 124, "绝热工程\\管道设备"},
    {"4-", 40, "电气设备安装\\其他"},
    {"4-2-", 42, "控制设备\\配电箱"},
    {"4-8-", 48, "电缆\\敷设"},
    {"4-9-", 49, "桥架\\钢制桥架"},
    {"4-10-", 50, "防雷接地\\接地装置"},
    {"4-12-", 52, "配管配线\\导管"},
    {"4-14-", 54, "照明器具\\灯具"},
    {"5-1-", 61, "弱电桥架\\安装"},
    {"5-2-", 62, "综合布线\\线缆"},
    {"5-6-", 66, "安全防范\\监控"},
    {"7-1-", 71, "通风空调设备\\末端"},
    {"7-2-", 72, "通风管道\\制作安装"},
    {"7-3-", 73, "通风部件\\风口阀门"},
    {"7-4-", 74, "支吊架"},
    {"9-1-", 91, "水灭火系统\\管道"},
    {"9-2-", 92, "气体灭火系统\\装置"},
};

constexpr SMark kBillMarks[] = {
    {"3101001", 1, "材质", "衬塑钢管"},     {"3101001", 2, "连接方式", "螺纹连接"},
    {"3101001", 3, "安装部位", "室内"},     {"3101002", 1, "材质", "衬塑钢管"},
    {"3101002", 2, "连接方式", "沟槽连接"}, {"3101003", 1, "材质", "薄壁不锈钢管"},
    {"3102001", 1, "材质", "Q235"},         {"3102001", 2, "除锈刷油", "防锈漆两遍，调和漆两遍"},
    {"3201001", 1, "名称", "紧定式钢导管"}, {"3201001", 2, "敷设方式", "暗敷"},
    {"3202001", 1, "材质", "镀锌钢板"},     {"3202002", 1, "型号", "YJV"},
    {"3301001", 1, "材质", "镀锌钢板"},     {"3301001", 2, "板材厚度", "0.6mm"},
    {"3301004", 1, "材质", "冷轧钢板"},     {"3301004", 2, "板材厚度", "1.2mm"},
    {"3302001", 1, "材质", "无缝钢管"},     {"3401001", 1, "安装部位", "室内"},
    {"3401001", 2, "连接方式", "螺纹连接"}, {"3501001", 1, "材质", "PVC"},
};

constexpr SSetting kSettings[] = {
    {"de_code", "DE2024"},    {"de_local", "示例省"},         {"de_year", "2024"},
    {"is_qd_mode", "1"},      {"project_name", "示例办公楼"}, {"qd_code", "QD2024"},
    {"qd_de_code", "DE2024"}, {"qd_de_local", "示例省"},      {"qd_de_mode", "0"},
    {"qd_de_year", "2024"},   {"qd_local", "示例省"},
};

// ---- Growth -----------------------------------------------------------------------------------

constexpr std::int64_t kRowsPerFurther = 2000;  // floor, or system
constexpr std::size_t kMaxFloors = 40;
constexpr std::size_t kMaxSystems = 60;

/// How many of something a project of `rows` rows has that begins with `plain` of it.
std::size_t Grown(std::int64_t rows, std::size_t plain, std::size_t most) {
  const std::int64_t further = std::max<std::int64_t>(0, (rows - kPlainRows) / kRowsPerFurther);
  const auto room = static_cast<std::int64_t>(most - plain);
  return plain + static_cast<std::size_t>(std::min(further, room));
}

}  // namespace

std::span<const char* const> Disciplines() {
  return kDisciplines;
}
std::span<const char* const> Sections() {
  return kSections;
}
std::span<const SSystemGroup> SystemGroups() {
  return kSystemGroups;
}
std::span<const SPart> Parts() {
  return kParts;
}
std::span<const SChapter> BillChapters() {
  return kBillChapters;
}
std::span<const SChapter> QuotaChapters() {
  return kQuotaChapters;
}
std::span<const SMark> BillMarks() {
  return kBillMarks;
}
std::span<const SSetting> Settings() {
  return kSettings;
}

std::vector<SFloor> Floors(std::int64_t rows) {
  std::vector<SFloor> floors;
  for (const SPlainFloor& floor : kFloors) {
    floors.push_back({floor.name, floor.text, floor.plant});
  }
  // Above the plain building single floors and repeated pairs take turns.
  int next = 10;
  for (std::size_t count = Grown(rows, floors.size(), kMaxFloors); floors.size() < count;) {
    std::string name = std::to_string(next++);
    if (floors.size() % 2 == 1) {
      name += ',';
      name += std::to_string(next++);
    }
    floors.push_back({name, name, false});
  }
  return floors;
}

std::vector<SSystem> Systems(std::int64_t rows) {
  std::vector<int> counts;
  std::size_t total = 0;
  for (const SSystemGroup& group : kSystemGroups) {
    counts.push_back(group.count);
    total += static_cast<std::size_t>(group.count);
  }
  const std::size_t wanted = Grown(rows, total, kMaxSystems);
  for (std::size_t group = 0; total < wanted; group = (group + 1) % counts.size()) {
    if (*kSystemGroups[group].stem != '\0') {
      ++counts[group];
      ++total;
    }
  }
  std::vector<SSystem> systems;
  for (std::size_t group = 0; group < counts.size(); ++group) {
    const std::string path = kSystemGroups[group].path;
    const std::string stem = kSystemGroups[group].stem;
    for (int number = 1; number <= counts[group]; ++number) {
      std::string name = path;
      if (!stem.empty()) {
        name += '\\';
        name += stem;
        name += std::to_string(number);
      }
      systems.push_back({group, std::move(name)});
    }
  }
  return systems;
}

}  // namespace demo
