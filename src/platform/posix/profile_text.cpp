#include "platform/posix/profile_text.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kNowhere = std::string_view::npos;

// One line: its bytes without the line break, and where it and the next line begin.
struct Line {
  std::size_t begin;
  std::size_t next;
  std::string_view bytes;
};

Line LineAt(std::string_view text, std::size_t begin) {
  const std::size_t feed = text.find('\n', begin);
  if (feed == kNowhere) return {begin, text.size(), text.substr(begin)};
  return {begin, feed + 1, text.substr(begin, feed - begin)};
}

std::size_t FirstLine(std::string_view text) {
  return text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0;
}

std::string_view Trim(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(kBlanks);
  if (first == kNowhere) return bytes.substr(0, 0);
  return bytes.substr(first, bytes.find_last_not_of(kBlanks) - first + 1);
}

char Lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool SameName(std::string_view one, std::string_view other) {
  return one.size() == other.size() &&
         std::equal(one.begin(), one.end(), other.begin(),
                    [](char left, char right) { return Lower(left) == Lower(right); });
}

bool IsComment(std::string_view trimmed) {
  return !trimmed.empty() && (trimmed.front() == ';' || trimmed.front() == '#');
}

bool IsHeader(std::string_view trimmed) {
  return !trimmed.empty() && trimmed.front() == '[' && trimmed.find(']') != kNowhere;
}

// Whether the line is the header of `section`. A name may hold brackets of its own, and a comment that holds
// brackets may follow the header, so every closing bracket is tried as the one that ends the name.
bool IsHeaderOf(std::string_view line, std::string_view section) {
  line = Trim(line);
  if (line.empty() || line.front() != '[') return false;
  for (std::size_t end = line.find(']'); end != kNowhere; end = line.find(']', end + 1)) {
    if (!SameName(Trim(line.substr(1, end - 1)), section)) continue;
    const std::string_view rest = Trim(line.substr(end + 1));
    if (rest.find(']') == kNowhere || IsComment(rest)) return true;
  }
  return false;
}

// Splits a line into key and value. Not for headers; false for comments and for lines without a key.
bool SplitKeyLine(std::string_view line, std::string_view* key, std::string_view* value) {
  const std::size_t equals = line.find('=');
  if (equals == kNowhere) return false;
  *key = Trim(line.substr(0, equals));
  if (key->empty() || IsComment(*key)) return false;
  const std::string_view behind = line.substr(equals + 1);
  const std::size_t first = behind.find_first_not_of(kBlanks);
  if (first != kNowhere) {
    *value = Trim(behind);
  } else {
    // No value yet: its place is behind the blanks, but before the carriage return of the line break.
    const bool hasReturn = !behind.empty() && behind.back() == '\r';
    *value = behind.substr(behind.size() - (hasReturn ? 1 : 0), 0);
  }
  return true;
}

bool IsQuoted(std::string_view value) {
  return value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
         value.back() == value.front();
}

std::string_view Unquoted(std::string_view value) {
  return IsQuoted(value) ? value.substr(1, value.size() - 2) : value;
}

std::string Written(std::string_view value) {
  if (Trim(value).size() == value.size() && !IsQuoted(value)) return std::string(value);
  return '"' + std::string(value) + '"';
}

std::string_view LineBreak(std::string_view text) {
  const std::size_t feed = text.find('\n');
  return feed != kNowhere && feed > 0 && text[feed - 1] == '\r' ? "\r\n" : "\n";
}

bool EndsInEmptyLine(std::string_view text) {
  if (text.empty() || text.back() != '\n') return false;
  text.remove_suffix(1);
  const std::size_t feed = text.rfind('\n');
  return Trim(text.substr(feed == kNowhere ? FirstLine(text) : feed + 1)).empty();
}

void AppendSection(std::string& text, std::string_view section, const std::string& keyLine) {
  const std::string lineBreak(LineBreak(text));
  if (text.size() > FirstLine(text)) {
    if (text.back() != '\n') text += lineBreak;
    if (!EndsInEmptyLine(text)) text += lineBreak;
  }
  text += '[';
  text += section;
  text += ']' + lineBreak + keyLine + lineBreak;
}

// Start of what belongs to the header at `header`: the comment lines that stand right above it.
std::size_t CommentsAbove(std::string_view text, std::size_t header, std::size_t limit) {
  std::size_t begin = header;
  while (begin > limit) {
    const std::size_t feed = begin >= 2 ? text.rfind('\n', begin - 2) : kNowhere;
    const std::size_t above = std::max(feed == kNowhere ? 0 : feed + 1, limit);
    if (!IsComment(Trim(text.substr(above, begin - above)))) break;
    begin = above;
  }
  return begin;
}

}  // namespace

std::size_t FindSectionInText(std::string_view text, std::string_view section) {
  section = Trim(section);
  for (std::size_t at = FirstLine(text); at < text.size();) {
    const Line line = LineAt(text, at);
    if (IsHeaderOf(line.bytes, section)) return line.next;
    at = line.next;
  }
  return kNowhere;
}

std::optional<std::string_view> FindKeyInText(std::string_view text, std::size_t body, std::string_view key) {
  key = Trim(key);
  for (std::size_t at = body; at < text.size();) {
    const Line line = LineAt(text, at);
    if (IsHeader(Trim(line.bytes))) break;
    std::string_view found;
    std::string_view value;
    if (SplitKeyLine(line.bytes, &found, &value) && SameName(found, key)) return Unquoted(value);
    at = line.next;
  }
  return std::nullopt;
}

std::string KeysInText(std::string_view text, std::size_t body) {
  std::string names;
  for (std::size_t at = body; at < text.size();) {
    const Line line = LineAt(text, at);
    if (IsHeader(Trim(line.bytes))) break;
    std::string_view key;
    std::string_view value;
    if (SplitKeyLine(line.bytes, &key, &value)) (names += key) += '\0';
    at = line.next;
  }
  return names;
}

bool SetKeyInText(std::string& text, std::string_view section, std::string_view key, std::string_view value) {
  section = Trim(section);
  key = Trim(key);
  const std::string keyLine = std::string(key) + '=' + Written(value);
  const std::size_t body = FindSectionInText(text, section);
  if (body == kNowhere) {
    AppendSection(text, section, keyLine);
    return true;
  }
  std::size_t place = body;
  for (std::size_t at = body; at < text.size();) {
    const Line line = LineAt(text, at);
    if (IsHeader(Trim(line.bytes))) break;
    std::string_view found;
    std::string_view old;
    if (SplitKeyLine(line.bytes, &found, &old)) {
      if (SameName(found, key)) {
        if (Unquoted(old) == value) return false;
        text.replace(static_cast<std::size_t>(old.data() - text.data()), old.size(), Written(value));
        return true;
      }
      place = line.next;
    }
    at = line.next;
  }
  const std::string lineBreak(LineBreak(text));
  text.insert(place, text[place - 1] == '\n' ? keyLine + lineBreak : lineBreak + keyLine + lineBreak);
  return true;
}

bool DeleteKeyInText(std::string& text, std::string_view section, std::string_view key) {
  key = Trim(key);
  const std::size_t body = FindSectionInText(text, section);
  if (body == kNowhere) return false;
  const std::string_view whole(text);
  std::string kept;
  std::size_t copied = 0;  // bytes of the text that are dealt with
  for (std::size_t at = body; at < whole.size();) {
    const Line line = LineAt(whole, at);
    if (IsHeader(Trim(line.bytes))) break;
    std::string_view found;
    std::string_view value;
    if (SplitKeyLine(line.bytes, &found, &value) && SameName(found, key)) {
      kept += whole.substr(copied, line.begin - copied);
      copied = line.next;
    }
    at = line.next;
  }
  if (copied == 0) return false;
  kept += whole.substr(copied);
  text = std::move(kept);
  return true;
}

bool DeleteSectionInText(std::string& text, std::string_view section) {
  section = Trim(section);
  const std::string_view whole(text);
  std::string kept;
  std::size_t copied = 0;
  for (std::size_t at = FirstLine(whole); at < whole.size();) {
    const Line header = LineAt(whole, at);
    at = header.next;
    if (!IsHeaderOf(header.bytes, section)) continue;
    while (at < whole.size()) {
      const Line line = LineAt(whole, at);
      if (IsHeader(Trim(line.bytes))) {
        at = CommentsAbove(whole, at, header.next);
        break;
      }
      at = line.next;
    }
    kept += whole.substr(copied, header.begin - copied);
    copied = at;
  }
  if (copied == 0) return false;
  kept += whole.substr(copied);
  text = std::move(kept);
  return true;
}
