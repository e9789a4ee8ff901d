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
      : OnReport([toReports](const std::string&) { return toReports; }), hands_(hands) {}
  BoxAnswer ShowMessageBox(const MessageBoxRequest& request) override {
    switch (request.Buttons) {
      case BoxButtons::AbortRetryIgnore:
        Reports.push_back(request.Text);
        EXPECT_LT(Reports.size(), 200U) << "the reports do not end: " << request.Text;
        return Reports.size() < 200 ? OnReport(request.Text) : BoxAnswer::Abort;
      case BoxButtons::YesNo:
      case BoxButtons::YesNoCancel:
        return SayNo ? BoxAnswer::No : BoxAnswer::Yes;
      case BoxButtons::OkCancel:
        if (OnOkCancel) return OnOkCancel();
        [[fallthrough]];
      default:
        Messages.push_back(request.Text);
        if (OnMessage) OnMessage(request.Text);
        return BoxAnswer::Ok;
    }
  }
  std::string ShowInputBox(const std::string&, const std::string&,
                           const std::string& offered) override {
    return Typed.empty() ? offered : Typed;
  }
  std::string ShowOpenFile(const OpenFileRequest&) override { return Picked; }
  void Post(std::function<void()> action) override { hands_.Post(std::move(action)); }

  std::function<BoxAnswer(const std::string& text)> OnReport;
  std::function<BoxAnswer()> OnOkCancel;
  std::function<void(const std::string& text)> OnMessage;
  std::vector<std::string> Reports, Messages;  ///< failures; boxes that only have to be read
  bool SayNo = false;
  std::string Typed;   ///< into every input box; "" takes what is offered
  std::string Picked;  ///< on every disk

 private:
  ScriptedDesktop& hands_;
};

}  // namespace ostrel
