#pragma once

// What stores of one kind are made from and known by. Whoever opens a store brings it along; it must
// live as long as the store.

#include <cstdint>
#include <string>

#include "platform/database/table_definition.h"

namespace ostrel {

struct StoreFormat {
  std::uint32_t ApplicationId = 0;  ///< in the file's header: whose file it is
  std::uint32_t LayoutVersion = 0;  ///< beside it: of the table's layout
  TableDefinition Table;            ///< the one table of the file

  /// The index by which lines are looked up, and its field. A store without it is none the worse.
  std::string IndexName;
  std::string IndexField;
};

}  // namespace ostrel
