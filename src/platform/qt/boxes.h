#pragma once

// The modal boxes of the real desktop. Every text in them is plain text: what stands in a field or a
// file never turns into markup.

#include <string>

#include "platform/desktop/desktop.h"

namespace ostrel {

BoxAnswer RunMessageBox(const MessageBoxRequest& request);
std::string RunInputBox(const std::string& prompt, const std::string& title,
                        const std::string& offered);
std::string RunOpenFile(const OpenFileRequest& request);

}  // namespace ostrel
