#include "battery/hands_harm.h"

#include <filesystem>

#include "platform/values/failure.h"

namespace ostrel {

void LuckyProbe::Arm(Harm& luck) {
  toCome_ = luck.Below(60);
  times_ = 1 + luck.Below(3);
  behind_ = luck.Coin();
  site_ = 0;
}

void LuckyProbe::Before(const StatementSite& site) {
  if (OnReach) OnReach(site);
  if (times_ > 0 && site_ == 0 && toCome_-- == 0) site_ = site.Line;
  if (!behind_) FailAt(site);
}

void LuckyProbe::After(const StatementSite& site) {
  if (OnDone) OnDone(site);
  if (behind_) FailAt(site);
}

void LuckyProbe::FailAt(const StatementSite& site) {
  if (times_ == 0 || site.Line != site_) return;
  --times_;
  struck_ = true;
  throw Failure(3051, "Planted.");
}

StepHarm::StepHarm(HarmKind kind, unsigned seed, const std::string& store, LuckyProbe& probe,
                   std::function<void()>& reports, bool& struck)
    : probe_(probe), reports_(reports) {
  static const char* const kStages[] = {"BEGIN; SELECT count(*) FROM OstrelPr", "BEGIN IMMEDIATE",
                                        "BEGIN EXCLUSIVE"};
  Harm luck(seed);
  left_ = luck.Below(6);
  reports_ = [this, &struck] {
    struck = true;
    if (left_-- == 0) LetGo();
  };
  if (kind == HarmKind::Statement) probe.Arm(luck);
  if (kind == HarmKind::Lock) {
    lock_ = std::make_unique<OutsideStore>(store);
    lock_->Do(kStages[luck.Below(3)]);
    struck = true;
  }
  if (kind == HarmKind::FullDisk) {
    full_ = std::make_unique<FullDisk>(std::filesystem::file_size(store));
    struck = true;
  }
}

StepHarm::~StepHarm() {
  LetGo();
  probe_.Disarm();
  reports_ = {};
}

void StepHarm::LetGo() {
  lock_.reset();
  full_.reset();
}

}  // namespace ostrel
