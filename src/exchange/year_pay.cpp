#include "exchange/year_pay.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "frame/app_state.h"
#include "platform/database/dbf_header.h"
#include "platform/database/dbf_write.h"
#include "platform/files/os_file.h"
#include "platform/files/replace_file.h"
#include "platform/values/failure.h"

namespace ostrel {

namespace {

const std::vector<std::string>& YearPayFields() {
  static const std::vector<std::string> fields = {"YTD_GROSS",  "YTD_FIT", "YTD_SIT", "YTD_FICA",
                                                  "YTD_MEDICR", "YTD_SDI", "YTD_NET"};
  return fields;
}

bool HasYearPay(std::string_view head) {
  return std::any_of(YearPayFields().begin(), YearPayFields().end(),
                     [head](const std::string& field) { return NamesField(head, field); });
}

}  // namespace

std::string StatementThatClearsPay() {
  std::string assignments;
  for (const std::string& field : YearPayFields()) {
    assignments += (assignments.empty() ? "" : ", ") + field + "=0";
  }
  return "Update Prms" + ClientNumb + " set " + assignments;
}

void TakeOutYearPay(const std::string& name, std::string& content) {
  if (!HasYearPay(std::string_view(content).substr(0, kLongestHead))) return;
  try {
    content = WithZeros(content, name, YearPayFields());
  } catch (const Failure& failure) {
    throw Failure(failure.Number, failure.Text + " The pay of the year stays in it.");
  }
}

void ClearYearPay(const std::string& path) {
  if (!HasYearPay(OsFile::OpenToRead(path).ReadFirst(kLongestHead))) return;
  const std::string before = ReadTableFile(path);
  std::string after = before;
  TakeOutYearPay(path, after);
  if (after != before) ReplaceFile(path, after, Readers::UserAlone);
}

}  // namespace ostrel
