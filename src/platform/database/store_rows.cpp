#include "platform/database/store_rows.h"

namespace ostrel {

std::vector<Bookmark> StoreRows::UpTo(Bookmark highest) const {
  transactions_.Hold();
  SqliteStatement& statement = connection_.ReadStatement("SELECT rowid FROM " + table_.Name +
                                                         " WHERE rowid <= ?1 ORDER BY rowid");
  statement.Bind(1, highest);
  std::vector<Bookmark> rows;
  while (statement.Step()) rows.push_back(statement.Integer(0));
  return rows;
}

}  // namespace ostrel
