#pragma once

// What SQLite's result codes mean to a person: the one table between the library's codes and the
// numbers that the office knows.

#include <string_view>

#include "platform/values/failure.h"

namespace ostrel {

/// What was tried; the same code is another failure at another step.
enum class StoreStep { Create, Read, Write, Delete, Alter };

/// The failure that a result code stands for.
///   code     primary or extended
///   message  SQLite's own words, put in brackets behind ours
Failure StoreFailure(int code, StoreStep step, std::string_view message);

}  // namespace ostrel
