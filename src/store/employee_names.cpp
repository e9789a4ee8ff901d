#include "store/employee_names.h"

#include "frame/app_state.h"
#include "store/lookups.h"
#include "store/timecard_store.h"

namespace ostrel {

void SetSortName(const FailureTail& statement, std::int32_t line, const Recordset& timecard,
                 std::int32_t EmplNumb) {
  // A table that stands on no record answers 0, which is nobody's number.
  bool found = EmplNumb != 0 && NumOrZero(PrmsRs, "EMPL_NUMB") == static_cast<float>(EmplNumb);
  if (!found) {
    statement(line, [&] {
      PrmsRs.Seek("=", EmplNumb);
      found = !PrmsRs.NoMatch();
    });
  }
  if (found) {
    statement(line + 1, [&] { timecard["SORT_NAME"] = PrmsRs["SORT_NAME"].Get(); });
  } else {
    statement(line + 2, [&] { timecard["SORT_NAME"] = ""; });
  }
  statement(line + 3, [&] { BlankIfEmpty(timecard["SORT_NAME"]); });
}

}  // namespace ostrel
