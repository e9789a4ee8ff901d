#pragma once

// Harm that strikes while random hands do a step: statements that fail, a store that somebody holds,
// a disk that is full. Some reports later, and at the latest behind the step, it has passed.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "battery/battery.h"
#include "frame/failure_reporting.h"
#include "support/full_disk.h"
#include "support/outside_store.h"

namespace ostrel {

enum class HarmKind { None, Statement, Lock, FullDisk };

/// Fails some statements: a few times from one on, before it or behind it.
class LuckyProbe : public StatementProbe {
 public:
  explicit LuckyProbe(bool& struck) : struck_(struck) { SetStatementProbe(this); }
  ~LuckyProbe() override { SetStatementProbe(nullptr); }
  void Arm(Harm& luck);
  void Disarm() {
    times_ = 0;
    behind_ = false;
  }
  void Before(const StatementSite& site) override;
  void After(const StatementSite& site) override;

  /// Whether a retry would do again what is done: the statement has failed behind its work.
  bool HasFailedBehind() const { return behind_ && !site_.empty(); }

  /// Told of every statement before it, and when it is done.
  std::vector<std::function<void(const StatementSite&)>> OnReach, OnDone;

 private:
  void FailAt(const StatementSite& site);
  std::size_t toCome_ = 0, times_ = 0;
  bool behind_ = false;
  std::string site_;  // of the first that fails
  bool& struck_;
};

class StepHarm {
 public:
  ///   reports  set to what is to be called at each report
  ///   struck   set once anything has gone wrong
  StepHarm(HarmKind kind, unsigned seed, const std::string& store, LuckyProbe& probe,
           std::function<void()>& reports, bool& struck);
  ~StepHarm();
  StepHarm(const StepHarm&) = delete;
  StepHarm& operator=(const StepHarm&) = delete;

 private:
  void LetGo();

  LuckyProbe& probe_;
  std::function<void()>& reports_;
  std::size_t left_ = 0;  // reports until it passes
  std::unique_ptr<OutsideStore> lock_;
  std::unique_ptr<FullDisk> full_;
};

}  // namespace ostrel
