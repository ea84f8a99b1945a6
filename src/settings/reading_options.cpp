#include "settings/reading_options.h"

#include "platform/profile_batch.h"
#include "settings/profile_values.h"

namespace {

std::int32_t Read(const char* profile, const ReadingKey& key) {
  return ReadProfileInt(profile, kReadingSection, key.key, ReadingOptions{}.*key.field);
}

}  // namespace

void LoadReading(const char* profile, ReadingOptions& options) {
  for (const ReadingKey& key : kReadingKeys)
    options.*key.field = Read(profile, key);
}

FileError SaveReading(const char* profile, const ReadingOptions& options) {
  return SaveProfile(profile, [&] {
    for (const ReadingKey& key : kReadingKeys) {
      if ((Read(profile, key) != 0) == (options.*key.field != 0)) continue;
      WriteProfileInt(profile, kReadingSection, key.key, options.*key.field);
    }
  });
}
