#include "platform/database/refusals.h"

#include <string>

#include "platform/values/failure.h"

namespace ostrel {

void RefuseOperation(std::string_view call) {
  throw Failure(failure_number::kNotOffered,
                "This kind of table or answer does not offer " + std::string(call) + ".");
}

void RefuseUnknownField(std::string_view name) {
  throw Failure(failure_number::kItemNotFound, "There is no field \"" + std::string(name) + "\".");
}

void RefuseUnknownTable(std::string_view name) {
  throw Failure(failure_number::kNoSuchTable, "There is no table \"" + std::string(name) + "\".");
}

void RefuseDeletedRow() { throw Failure(failure_number::kDeletedRecord, "Record is deleted."); }

void RefuseChangedRow() {
  throw Failure(failure_number::kRecordChanged,
                "Record has been changed by another program since it was shown.");
}

}  // namespace ostrel
