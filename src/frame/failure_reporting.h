#pragma once

// Failure reporting: the one way in which the operator learns of a run-time failure, and the error
// tails that lead there. A routine writes each statement that can fail as a numbered call:
//
//   FailureTail statement{ScannerModule, "AutoClockIn"};
//   statement(4010, [&] { LinesRs.AddNew(); });
//
// When the statement fails the operator is asked. Retry runs that statement again, Ignore goes on
// behind it with the routine's locals as they are, Abort ends the program. So a statement wraps the
// one call that can fail; values that it sets are declared outside, and branches stay outside. The
// number is the statement's identity in reports and in the retry rule: unique in its module, rising,
// never given to another.

#include <cstdint>
#include <exception>
#include <functional>
#include <string>

#include "platform/values/failure.h"

namespace ostrel {

// Labels of the modules, as the reports print them.
inline constexpr const char* ScannerModule = "Scanner";  // the form's routines
inline constexpr const char* PrinModule = "Prin";        // store and exchange routines
inline constexpr const char* OrlibModule = "ORLIB";      // shared text helpers
inline constexpr const char* HalvaneModule = "HALVANE";  // the reporter itself

/// Shows one failure to the operator and logs it in Errors.Log.
///   ErrNum, ErrMsg, ErrLine      the failure; the reporter extends ErrMsg, and a failure of its own
///                                replaces all three
///   RoutineLabel, ModuleLabel    where it happened
///   Answer                       out: 0 ignore, -1 retry
///   throws                       ProgramEnded when the operator aborts
/// With several users on the data, a statement that another user's lock stops is retried for ten
/// seconds without a word; number 16 is passed over without a word.
void DisplayErrMessage(std::int32_t& ErrNum, std::string& ErrMsg, std::int32_t& ErrLine,
                       const std::string& RoutineLabel, const std::string& ModuleLabel,
                       std::int16_t& Answer);

/// For a failure, or any other fault, that leaves an event routine altogether.
///   returns  whether the operator wants the failed step to run again
bool ReportAtEdge(const std::exception& fault);

/// Forgets the site of the last lock conflict.
void ResetFailureReporting();

/// Any exception as a failure: a fault of the program's own gets a number too, so that nothing can
/// take the program down unreported.
Failure AsFailure(const std::exception& fault);

struct StatementSite {
  const char* Module;
  const char* Routine;
  std::int32_t Line;
};

/// Sees every statement of every tail before it runs and after it has run well; whatever it throws
/// counts as the statement's failure. For tests that plant failures.
class StatementProbe {
 public:
  virtual ~StatementProbe() = default;
  virtual void Before(const StatementSite& site) = 0;
  virtual void After(const StatementSite& site) = 0;
};
void SetStatementProbe(StatementProbe* probe);

namespace detail {
extern StatementProbe* TheProbe;

template <class Statement>
void RunProbed(const StatementSite& site, Statement& statement) {
  if (TheProbe != nullptr) TheProbe->Before(site);
  statement();
  if (TheProbe != nullptr) TheProbe->After(site);
}
}  // namespace detail

/// The full tail.
class FailureTail {
 public:
  constexpr FailureTail(const char* module, const char* routine)
      : module_(module), routine_(routine) {}

  template <class Statement>
  void operator()(std::int32_t line, Statement&& statement) const {
    for (;;) {
      try {
        detail::RunProbed({module_, routine_, line}, statement);
        return;
      } catch (const std::exception& fault) {
        if (!WantsRetry(line, fault)) return;
      }
    }
  }

 private:
  bool WantsRetry(std::int32_t line, const std::exception& fault) const;

  const char* module_;
  const char* routine_;
};

/// A statement on which others depend, such as the AddNew before the fields of a line: what cannot
/// mean anything without it is passed over, so that one fault brings one report.
///   returns  whether it has done its work; false where the operator has ignored its failure
template <class Statement>
bool IsDone(const FailureTail& statement, std::int32_t line, Statement&& body) {
  bool done = false;
  statement(line, [&] {
    body();
    done = true;
  });
  return done;
}

/// The silent tail: a failing statement is passed over, and the caller sees it by the result alone.
class SilentTail {
 public:
  constexpr SilentTail(const char* module, const char* routine)
      : module_(module), routine_(routine) {}

  template <class Statement>
  void operator()(std::int32_t line, Statement&& statement) const noexcept {
    try {
      detail::RunProbed({module_, routine_, line}, statement);
    } catch (const std::exception&) {
      return;  // the lookup's result says that nothing was found
    }
  }

 private:
  const char* module_;
  const char* routine_;
};

}  // namespace ostrel
