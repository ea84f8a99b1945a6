#include "platform/posix/profile_file.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/profile_store.h"
#include "platform/posix/profile_text.h"
#include "platform/profile_batch.h"
#include "platform/win32.h"

namespace {

// A text whose last section found is remembered, since keys are asked for section by section.
struct SearchedText {
  std::string text;
  std::string section;
  std::size_t body = std::string::npos;

  void Take(std::string newText) {
    text = std::move(newText);
    section.clear();
  }
  [[nodiscard]] std::optional<std::string_view> Find(std::string_view wanted, std::string_view key) {
    Turn(wanted);
    return body == std::string::npos ? std::nullopt : FindKeyInText(text, body, key);
  }
  [[nodiscard]] std::string Keys(std::string_view wanted) {
    Turn(wanted);
    return body == std::string::npos ? "" : KeysInText(text, body);
  }
  void Turn(std::string_view wanted) {
    if (!section.empty() && section == wanted) return;
    section = wanted;
    body = FindSectionInText(text, wanted);
  }
};

// The profile as it was last read.
struct Cache {
  std::string path;
  struct stat status {};
  bool settled = false;
  SearchedText searched;
};

// The save under way.
struct Save {
  int depth = 0;
  std::string file;
  FileError error = 0;  // of the first write that was refused
  bool changed = false;
  SearchedText searched;  // with what was written so far
};

Cache theCache;
Save theSave;
std::int64_t theReadsFromDisk = 0;

bool SameTime(const timespec& one, const timespec& other) {
  return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

bool SameFile(const struct stat& one, const struct stat& other) {
  return one.st_dev == other.st_dev && one.st_ino == other.st_ino && one.st_size == other.st_size &&
         SameTime(one.st_mtim, other.st_mtim) && SameTime(one.st_ctim, other.st_ctim);
}

// Whether the file was left alone for some time before now. A file that was written a moment ago may be
// written again within the same tick of the file system's clock, and its status would not tell.
bool IsSettled(const struct stat& status) {
  constexpr long kTickNs = 50'000'000;
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const double age = static_cast<double>(now.tv_sec - status.st_ctim.tv_sec) * 1e9 +
                     static_cast<double>(now.tv_nsec - status.st_ctim.tv_nsec);
  return age > static_cast<double>(kTickNs);
}

// The profile as it is now, from memory when it has not changed. Null when there is none.
SearchedText* CurrentText(const char* file) {
  if (theSave.depth > 0 && theSave.file == file) return &theSave.searched;
  const std::string path = ProfilePathOf(file);
  struct stat status {};
  if (path.empty() || stat(path.c_str(), &status) != 0) return nullptr;
  Cache& cache = theCache;
  if (cache.settled && cache.path == path && SameFile(cache.status, status)) return &cache.searched;
  ProfileText profile = LoadProfileText(path);
  ++theReadsFromDisk;
  cache.path = path;
  cache.status = profile.kind == ProfileKind::Loaded ? profile.status : status;
  cache.settled = IsSettled(cache.status);
  cache.searched.Take(std::move(profile.text));
  return &cache.searched;
}

std::optional<std::string_view> FindValue(LPCSTR section, LPCSTR key, LPCSTR file) {
  assert(section != nullptr && key != nullptr && file != nullptr);
  SearchedText* const text = CurrentText(file);
  if (text == nullptr || *section == '\0' || *key == '\0') return std::nullopt;
  return text->Find(section, key);
}

DWORD CopyKeys(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file) {
  assert(section != nullptr && size >= 2);
  SearchedText* const text = CurrentText(file);
  const std::string keys = text == nullptr ? "" : text->Keys(section);
  const std::size_t length = std::min<std::size_t>(keys.size(), size - 2);
  std::memcpy(buffer, keys.data(), length);
  buffer[length] = buffer[length + 1] = '\0';
  return static_cast<DWORD>(length);
}

// A name or value that cannot stand in the file as it is would turn into other lines of it.
bool FitsOneLine(std::string_view bytes) {
  return bytes.find('\n') == std::string_view::npos;
}

bool IsWritable(LPCSTR section, LPCSTR key, LPCSTR value) {
  if (*section == '\0' || !FitsOneLine(section)) return false;
  if (key != nullptr && (*key == '\0' || !FitsOneLine(key) || std::strchr(key, '=') != nullptr ||
                         std::strchr(";#[", *key) != nullptr)) {
    return false;
  }
  return key == nullptr || value == nullptr || FitsOneLine(value);
}

// A write of the save under way.
void Write(LPCSTR section, LPCSTR key, LPCSTR value) {
  SearchedText& searched = theSave.searched;
  const bool changed = key == nullptr     ? DeleteSectionInText(searched.text, section)
                       : value == nullptr ? DeleteKeyInText(searched.text, section, key)
                                          : SetKeyInText(searched.text, section, key, value);
  if (!changed) return;
  theSave.changed = true;
  searched.section.clear();
}

// Lets `writes` change the text. True when it has.
bool RunWrites(const std::function<void()>& writes, std::string& text) {
  theSave.changed = false;
  theSave.searched.Take(std::move(text));
  writes();
  text = std::move(theSave.searched.text);
  theSave.searched.Take({});
  return theSave.changed && theSave.error == 0;
}

}  // namespace

std::int64_t ProfileReadsFromDisk() {
  return theReadsFromDisk;
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file) {
  std::string_view digits;
  if (const auto value = FindValue(section, key, file)) {
    digits = *value;
  } else {
    return static_cast<UINT>(fallback);
  }
  digits.remove_prefix(std::min(digits.find_first_not_of(" \t"), digits.size()));
  const bool negative = !digits.empty() && digits.front() == '-';
  if (negative || (!digits.empty() && digits.front() == '+')) digits.remove_prefix(1);
  UINT number = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') break;
    number = number * 10 + static_cast<UINT>(digit - '0');
  }
  return negative ? 0U - number : number;
}

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size,
                               LPCSTR file) {
  if (buffer == nullptr || size == 0) return 0;
  if (key == nullptr) return CopyKeys(section, buffer, size, file);
  const std::string_view otherwise = fallback != nullptr ? fallback : "";
  std::string_view value = FindValue(section, key, file).value_or(otherwise);
  value = value.substr(0, value.find('\0'));
  const std::size_t length = std::min<std::size_t>(value.size(), size - 1);
  std::memcpy(buffer, value.data(), length);
  buffer[length] = '\0';
  return static_cast<DWORD>(length);
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) {
  assert(section != nullptr && file != nullptr);
  const bool saving = theSave.depth > 0 && theSave.file == file;
  if (!IsWritable(section, key, value)) {
    if (saving && theSave.error == 0) theSave.error = EINVAL;
    return FALSE;
  }
  if (!saving) return SaveProfile(file, [=] { Write(section, key, value); }) == 0 ? TRUE : FALSE;
  Write(section, key, value);
  return TRUE;
}

FileError SaveProfile(const char* file, const std::function<void()>& writes) {
  if (theSave.depth > 0) {
    assert(theSave.file == file && "one file at a time");
    writes();
    return theSave.error;
  }
  const std::string path = ProfilePathOf(file);
  if (path.empty()) return ENOENT;
  theSave.file = file;
  theSave.error = 0;
  ++theSave.depth;
  const bool isBareName = path != file;
  const FileError error =
      ReplaceProfileText(path, isBareName, [&writes](std::string& text) { return RunWrites(writes, text); });
  --theSave.depth;
  return error != 0 ? error : theSave.error;
}
