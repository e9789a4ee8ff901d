#include "day/day_page.h"

#include <algorithm>

namespace ostrel {

namespace {

void Append(std::string& all, std::string text, bool first) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char c) { return c < ' '; }, ' ');
  if (!first) all += '\t';
  all += text;
}

}  // namespace

std::string PageAsText(const DayPage& page) {
  std::string all;
  for (std::size_t i = 0; i < page.Columns.size(); ++i)
    Append(all, page.Columns[i].Caption, i == 0);
  all += "\r\n";
  for (const PageRow& row : page.Rows) {
    for (std::size_t i = 0; i < row.Texts.size(); ++i) Append(all, row.Texts[i], i == 0);
    all += "\r\n";
  }
  return all;
}

}  // namespace ostrel
