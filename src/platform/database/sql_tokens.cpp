#include "platform/database/sql_tokens.h"

#include <string>

#include "platform/values/failure.h"
#include "platform/values/text.h"

namespace ostrel {
namespace {

constexpr std::size_t kQuotedCharacters = 60;

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }
constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
constexpr bool IsWordPart(char c) { return IsWordStart(c) || IsDigit(c); }

constexpr std::string_view kSymbols = "=<>(),*;+-";

}  // namespace

void SqlTokens::Refuse(std::size_t place) const {
  const std::string_view rest = sql_.substr(place);
  throw Failure(failure_number::kQuerySyntax,
                rest.empty() ? "Syntax error: the query breaks off."
                             : "Syntax error in the query at: " + LeftOf(rest, kQuotedCharacters));
}

Token SqlTokens::Take(TokenKind kind, std::size_t length) {
  const Token token{kind, sql_.substr(place_, length), place_};
  place_ += length;
  return token;
}

Token SqlTokens::TakeEnclosed(TokenKind kind, char end) {
  const std::size_t start = place_;
  std::size_t close = sql_.find(end, start + 1);
  // Two quotes inside a text stand for one.
  while (end == '\'' && close != sql_.npos && sql_.substr(close + 1).starts_with('\'')) {
    close = sql_.find(end, close + 2);
  }
  if (close == sql_.npos) Refuse(start);
  place_ = close + 1;
  return {kind, sql_.substr(start + 1, close - start - 1), start};
}

std::size_t SqlTokens::NumberLength() const {
  std::size_t at = place_;
  const auto digits = [&] {
    const std::size_t first = at;
    while (at < sql_.size() && IsDigit(sql_[at])) ++at;
    return at - first;
  };
  const auto skip = [&](std::string_view any) {
    if (at < sql_.size() && any.find(sql_[at]) != any.npos) ++at;
  };
  std::size_t count = digits();
  if (at < sql_.size() && sql_[at] == '.') {
    ++at;
    count += digits();
  }
  if (count == 0) Refuse(place_);
  if (at < sql_.size() && (sql_[at] == 'e' || sql_[at] == 'E')) {
    ++at;
    skip("+-");
    if (digits() == 0) Refuse(place_);
  }
  if (at < sql_.size() && (IsWordPart(sql_[at]) || sql_[at] == '.')) Refuse(place_);
  return at - place_;
}

Token SqlTokens::Next() {
  while (place_ < sql_.size() && IsBlank(sql_[place_])) ++place_;
  if (place_ == sql_.size()) return {TokenKind::End, {}, place_};
  const char first = sql_[place_];
  if (IsWordStart(first)) {
    std::size_t length = 1;
    while (place_ + length < sql_.size() && IsWordPart(sql_[place_ + length])) ++length;
    return Take(TokenKind::Word, length);
  }
  if (IsDigit(first) || first == '.') return Take(TokenKind::Number, NumberLength());
  if (first == '\'') return TakeEnclosed(TokenKind::Text, '\'');
  if (first == '#') return TakeEnclosed(TokenKind::Date, '#');
  if (first == '[') return TakeEnclosed(TokenKind::BracketedName, ']');
  if (kSymbols.find(first) != kSymbols.npos) return Take(TokenKind::Symbol, 1);
  Refuse(place_);
}

}  // namespace ostrel
