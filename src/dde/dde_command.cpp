#include "dde/dde_command.h"

namespace {

constexpr bool IsWhite(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// The string with an end that can be looked at; every token goes into the buffer with a NUL behind it.
class Scanner {
 public:
  Scanner(const char* text, int length, int at, DdeTokens& tokens)
      : text_(text), length_(length), at_(at), tokens_(tokens) {}

  [[nodiscard]] int At() const { return at_; }
  [[nodiscard]] bool AtEnd() const { return at_ >= length_; }
  [[nodiscard]] char Byte() const { return AtEnd() ? '\0' : text_[at_]; }
  void Step() { ++at_; }
  void SkipWhite() {
    while (!AtEnd() && IsWhite(Byte()))
      Step();
  }
  void TakeQuoted() {
    Step();
    while (!AtEnd()) {
      const char byte = Byte();
      Step();
      if (byte == '"') {
        if (Byte() != '"') return;
        Step();
      }
      Put(byte);
    }
  }
  void TakePlain() {
    for (; !AtEnd() && !IsWhite(Byte()) && Byte() != ']'; Step())
      Put(Byte());
  }
  void BeginToken(int slot) { tokens_.slots[static_cast<std::size_t>(slot)] = tokens_.buffer.data() + used_; }
  // A token takes no more bytes than it has in the string, the bracket or what ends it among them.
  void Put(char byte) {
    if (used_ < tokens_.buffer.size() - 1) tokens_.buffer[used_++] = byte;
  }
  void EndToken() {
    if (used_ < tokens_.buffer.size()) tokens_.buffer[used_++] = '\0';
  }

 private:
  const char* text_;
  int length_;
  int at_;
  DdeTokens& tokens_;
  std::size_t used_ = 0;
};

}  // namespace

int ParseDdeCommand(const char* command, int length, int start, DdeTokens& tokens) {
  tokens.buffer.fill('\0');
  tokens.slots.fill("");
  if (length < 0) return kDdeBadLength;
  if (start < 0) return kDdeBadStart;
  if (start > length) return kDdeStartBehindEnd;
  Scanner scanner(command, length, start, tokens);
  scanner.SkipWhite();
  if (scanner.AtEnd()) return 0;
  if (scanner.Byte() != '[') return kDdeNoBracket;
  scanner.Step();
  scanner.SkipWhite();
  for (int slot = 0; !scanner.AtEnd() && scanner.Byte() != ']'; ++slot) {
    if (slot == kDdeTokens) return kDdeTooManyTokens;
    scanner.BeginToken(slot);
    if (scanner.Byte() == '"') {
      scanner.TakeQuoted();
    } else {
      scanner.TakePlain();
    }
    scanner.EndToken();
    scanner.SkipWhite();
  }
  return scanner.At() + 1;
}
