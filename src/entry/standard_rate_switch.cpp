#include "entry/standard_rate_switch.h"

#include <string>

#include "frame/app_state.h"
#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
#include "platform/values/format.h"
#include "scan_main/scan_main.h"
#include "store/lookups.h"
#include "work_day/work_day.h"

namespace ostrel {

void chkStdRate_Click() {
  constexpr FailureTail statement{ScannerModule, "chkStdRate_Click"};
  if (chkStdRate.Value == 1) {
    txtInput[kRateBox].Text = kStdRateWord;
    txtInput[kQuanDescBox].Text = "HRS";
  } else {
    Value latest;
    statement(100, [&] { latest = DomainFunc("Prin App", "ETIME", "", "Max"); });
    std::string selection = WhereDay(Format(latest, DateFormat));
    if (mnuUseTimeClock.Checked) {
      selection += Option1[kPiecework].Value ? " and EVENT_TYPE='P'" : " and EVENT_TYPE='I'";
    }
    statement(110, [&] {
      txtInput[kQuanDescBox].Text = DomainFunc("Prin App", "QUAN_DESC", selection, "Last").ToText();
    });
    statement(120, [&] {
      txtInput[kRateBox].Text = DomainFunc("Prin App", "RATE", selection, "Last").ToText();
    });
    if (txtInput[kRateBox].Text == kStdRateText) txtInput[kRateBox].Text = kStdRateWord;
  }
  if (txtInput[kEmplBox].Shown()) statement(130, [] { txtInput[kEmplBox].SetFocus(); });
}

}  // namespace ostrel
