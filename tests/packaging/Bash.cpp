#include "packaging/Bash.h"

#include <algorithm>

namespace walrim {

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text)
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::vector<std::string> Bash(std::vector<std::string> arguments) {
  std::vector<std::string> words{"/usr/bin/env",
                                 "-i",
                                 "PATH=/usr/bin:/bin",
                                 "TERM=dumb",
                                 "LC_ALL=C.UTF-8",
                                 "INPUTRC=/dev/null",
                                 "HISTFILE=",
                                 "setsid",
                                 "--wait",
                                 "bash",
                                 "--norc",
                                 "--noprofile"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return words;
}

std::vector<std::string> LongOptions(const std::vector<HelpOption>& options) {
  std::vector<std::string> names;
  for (const HelpOption& option : options) {
    for (const std::string& name : option.names) {
      if (name.starts_with("--")) names.push_back(name);
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace walrim
