#pragma once

// The words of a query, one after another. sql_dialect.cpp makes sense of them.

#include <cstddef>
#include <string_view>

namespace ostrel {

enum class TokenKind { Word, BracketedName, Number, Text, Date, Symbol, End };

struct Token {
  TokenKind Kind = TokenKind::End;
  std::string_view Spelling;  ///< as written, without brackets, quotes or number signs around it
  std::size_t Start = 0;      ///< where it stands in the query, in bytes
};

class SqlTokens {
 public:
  /// The text must outlive the tokens, which point into it.
  explicit SqlTokens(std::string_view sql) : sql_(sql) {}

  /// The next token; at the end of the text, and ever after, one of kind End.
  ///   throws  Failure 3075 for a character that no token begins with, a quote, bracket or number
  ///           sign without its partner, a number that runs into letters
  Token Next();

  /// throws  Failure 3075, always, quoting the query from that place on
  [[noreturn]] void Refuse(std::size_t place) const;

 private:
  Token Take(TokenKind kind, std::size_t length);
  Token TakeEnclosed(TokenKind kind, char end);
  std::size_t NumberLength() const;

  std::string_view sql_;
  std::size_t place_ = 0;
};

}  // namespace ostrel
