#include "store/line_table.h"

namespace ostrel {

// Never destroyed: a store that is closed when statics go still writes by it.
const StoreFormat& TimecardFormat() {
  static const auto& format = *new StoreFormat{.ApplicationId = 0x4F735072,  // "OsPr"
                                               .LayoutVersion = 1,
                                               .Table = {"OstrelPr",
                                                         {{"EMPL_NUMB", FieldType::Single},
                                                          {"SORT_NAME", FieldType::Text, 15},
                                                          {"ETIME", FieldType::Date},
                                                          {"ETIME_STOP", FieldType::Date},
                                                          {"EVENT_TYPE", FieldType::Text, 1},
                                                          {"QUANTITY", FieldType::Double},
                                                          {"QUAN_DESC", FieldType::Text, 5},
                                                          {"ENTERPRISE", FieldType::Single},
                                                          {"OPERATION", FieldType::Single},
                                                          {"EQUIP_NUMB", FieldType::Single},
                                                          {"MEMO", FieldType::Text, 20},
                                                          {"RATE", FieldType::Double},
                                                          {"GROSS", FieldType::Double},
                                                          {"HOUR_GROSS", FieldType::Double},
                                                          {"HOURS", FieldType::Double}}},
                                               .IndexName = "dTime",
                                               .IndexField = "ETIME"};
  return format;
}

Database OpenTimecards(const std::string& path, StoreCheck check) {
  return OpenDatabase(path, TimecardFormat(), check);
}

}  // namespace ostrel
