// What keys the profile has, with what may stand in them: what people are told of the settings is made from
// this list. The numbers come from the tables that loading reads.
#pragma once

#include <string>
#include <vector>

struct ProfileKey {
  std::string section;
  std::string key;     // with N for a number of an enumeration
  std::string values;  // what may stand there
  std::string absent;  // what holds where the key does not stand there
};

// All keys, section by section. Keys of a setup have the names and values that they have elsewhere.
[[nodiscard]] std::vector<ProfileKey> ProfileKeys();
