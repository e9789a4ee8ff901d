#pragma once

// One statement that fails each time it runs, for as long as the object lives.

#include <cstdint>

#include "frame/failure_reporting.h"

namespace ostrel {

class FailingStatement : public StatementProbe {
 public:
  explicit FailingStatement(std::int32_t line) : line_(line) { SetStatementProbe(this); }
  ~FailingStatement() override { SetStatementProbe(nullptr); }
  void Before(const StatementSite& site) override {
    if (site.Line == line_) throw Failure(3022, "Planted.");
  }
  void After(const StatementSite& /*site*/) override {}

 private:
  std::int32_t line_;
};

}  // namespace ostrel
