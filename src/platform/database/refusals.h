#pragma once

// Refusals that all databases and recordsets share.

#include <string_view>

namespace ostrel {

/// For calls that a kind of database or recordset has no use for.
///   throws  Failure 3251, always, naming the call
[[noreturn]] void RefuseOperation(std::string_view call);

/// throws  Failure 3265, always, naming the field
[[noreturn]] void RefuseUnknownField(std::string_view name);

/// throws  Failure 3078, always, naming the table
[[noreturn]] void RefuseUnknownTable(std::string_view name);

/// throws  Failure 3167, always
[[noreturn]] void RefuseDeletedRow();

/// throws  Failure 3197, always
[[noreturn]] void RefuseChangedRow();

}  // namespace ostrel
