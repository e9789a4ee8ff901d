#include "entry/standard_rate_switch.h"

#include <string>

#include "frame/failure_reporting.h"
#include "frame/standard_rate.h"
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
    std::string latestDay;
    statement(100, [&] { latestDay = LatestDay(); });
    std::string selection = WhereDay(latestDay);
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
