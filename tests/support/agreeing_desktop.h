#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "support/scripted_desktop.h"

namespace ostrel {

/// An operator who agrees to everything and answers reports as told.
class AgreeingDesktop : public ScriptedDesktop {
 public:
  AgreeingDesktop(ScriptedDesktop& hands, BoxAnswer toReports)
      : hands_(hands), toReports_(toReports) {}
  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override {
    switch (request.Buttons) {
      case BoxButtons::AbortRetryIgnore:
        Reports.push_back(request.Text);
        EXPECT_LT(Reports.size(), 200U) << "the reports do not end: " << request.Text;
        if (Reports.size() >= 200) return BoxAnswer::Abort;
        return toReports_;
      case BoxButtons::YesNo:
      case BoxButtons::YesNoCancel:
        return SayNo ? BoxAnswer::No : BoxAnswer::Yes;
      default:
        Messages.push_back(request.Text);
        return BoxAnswer::Ok;
    }
  }
  std::string ShowInputBox(const std::string&, const std::string&,
                           const std::string& offered) override {
    return Typed.empty() ? offered : Typed;
  }
  std::string ShowOpenFile(const OpenFileRequest&) override { return Picked; }
  void Post(std::function<void()> action) override { hands_.Post(std::move(action)); }

  std::vector<std::string> Reports, Messages;  ///< failures; boxes that only have to be read
  bool SayNo = false;
  std::string Typed;   ///< into every input box; "" takes what is offered
  std::string Picked;  ///< on every disk

 private:
  ScriptedDesktop& hands_;
  BoxAnswer toReports_;
};

}  // namespace ostrel
