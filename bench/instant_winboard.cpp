// A stand-in for WinBoard that plays a game in no time, and notes when: for measuring what the program adds to a game.
// It needs nothing but its debug file and its record, and appends "START END" (nanoseconds of the clock that never
// jumps) to instant_times.txt in the current directory.

#include <chrono>
#include <cstdio>
#include <string>

namespace {

long long Now() {
  return std::chrono::duration_cast<std::chrono::nanoseconds>(
             std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

std::string ValueOf(int count, char** words, const std::string& option) {
  std::string value;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word.compare(0, option.size(), option) == 0) value = word.substr(option.size());
  }
  return value;
}

void WriteFile(const std::string& name, const std::string& text, const char* mode) {
  std::FILE* const file = std::fopen(name.c_str(), mode);
  if (file == nullptr) return;
  std::fputs(text.c_str(), file);
  std::fclose(file);
}

}  // namespace

int main(int count, char** words) {
  const long long start = Now();
  std::string debug_file = ValueOf(count, words, "/debugfile=");
  if (debug_file.empty()) debug_file = "winboard.debug";
  WriteFile(debug_file, "1\n2\n3\n4\n5\nGameEnds(27, Black mates, 6)\n", "w");
  WriteFile(ValueOf(count, words, "/sgf="),
            "[Event \"E\"]\n[Site \"S\"]\n[Date \"2026.11.21\"]\n[Round \"-\"]\n[White \"w\"]\n"
            "[Black \"b\"]\n[Result \"0-1\"]\n\n1. f3 e5 2. g4 Qh4 0-1\n\n",
            "w");
  WriteFile("instant_times.txt", std::to_string(start) + " " + std::to_string(Now()) + "\n", "a");
  return 0;
}
