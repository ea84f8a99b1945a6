// Where the entry of the program leaves the words of the command line for CommandWord.
#pragma once

#include <string>
#include <vector>

void StoreCommandWords(std::vector<std::string> words);
