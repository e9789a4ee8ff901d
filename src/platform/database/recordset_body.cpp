#include "platform/database/recordset_body.h"

#include "platform/database/refusals.h"

namespace ostrel {

void RecordsetBody::AddNew() { RefuseOperation("AddNew"); }
void RecordsetBody::Edit() { RefuseOperation("Edit"); }
void RecordsetBody::Update() { RefuseOperation("Update"); }
void RecordsetBody::Delete() { RefuseOperation("Delete"); }
void RecordsetBody::SetField(int, const Value&) { RefuseOperation("assigning to a field"); }
void RecordsetBody::SetIndex(std::string_view) { RefuseOperation("SetIndex"); }
void RecordsetBody::Seek(std::string_view, const Value&) { RefuseOperation("Seek"); }

std::vector<Value> RecordsetBody::RowToShow(std::size_t position, bool& asStored) const {
  asStored = true;
  return StoredRowAt(position);
}

}  // namespace ostrel
