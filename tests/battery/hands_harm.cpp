#include "battery/hands_harm.h"

#include <filesystem>

#include "platform/values/failure.h"

namespace ostrel {

namespace {

std::string NameOf(const StatementSite& site) { return site.Routine + std::to_string(site.Line); }

}  // namespace

void LuckyProbe::Arm(Harm& luck) {
  toCome_ = luck.Below(60);
  times_ = 1 + luck.Below(3);
  behind_ = luck.Coin();
  site_.clear();
}

void LuckyProbe::Before(const StatementSite& site) {
  for (const auto& told : OnReach) told(site);
  if (times_ > 0 && site_.empty() && toCome_-- == 0) site_ = NameOf(site);
  if (!behind_) FailAt(site);
}

void LuckyProbe::After(const StatementSite& site) {
  for (const auto& told : OnDone) told(site);
  if (behind_) FailAt(site);
}

void LuckyProbe::FailAt(const StatementSite& site) {
  if (times_ == 0 || NameOf(site) != site_) return;
  struck_ = true;
  --times_;
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
