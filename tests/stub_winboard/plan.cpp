#include "plan.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

namespace stub {
namespace {

constexpr const char* kPlanFile = "stub_plan.txt";
constexpr std::array<const char*, 4> kResults = {"1-0", "0-1", "1/2-1/2", "*"};

struct PlanLine {
  std::string key;
  std::vector<std::string> words;
};

std::vector<PlanLine> ReadLines(std::istream& file) {
  std::vector<PlanLine> lines;
  std::string text;
  while (std::getline(file, text)) {
    std::istringstream words(text);
    PlanLine line;
    if (!(words >> line.key) || line.key.front() == '#') continue;
    for (std::string word; words >> word;)
      line.words.push_back(word);
    lines.push_back(line);
  }
  return lines;
}

bool IsResult(const std::string& word) {
  return std::find(kResults.begin(), kResults.end(), word) != kResults.end();
}

Plan PlanOf(const PlanLine& line) {
  const std::string from = "pgn=";
  const std::string lasts = "ms=";
  const std::string comments = "kb=";
  Plan plan;
  for (const std::string& word : line.words) {
    if (IsResult(word)) {
      plan.result = word;
    } else if (word.compare(0, from.size(), from) == 0) {
      plan.pgn_from = word.substr(from.size());
    } else if (word.compare(0, lasts.size(), lasts) == 0) {
      plan.milliseconds = std::atoi(word.c_str() + lasts.size());
    } else if (word.compare(0, comments.size(), comments) == 0) {
      plan.kilobytes = std::atoi(word.c_str() + comments.size());
    } else {
      plan.words.insert(word);
    }
  }
  return plan;
}

Plan PlanByNumber(const GameKey& key) {
  Plan plan;
  const int number = key.name.size() > 1 ? std::atoi(key.name.c_str() + 1) : 0;
  plan.result = number % 3 == 0 ? "1/2-1/2" : number % 3 == 1 ? "1-0" : "0-1";
  return plan;
}

}  // namespace

Plan ReadPlan(const GameKey& key) {
  std::ifstream file(kPlanFile);
  const std::vector<PlanLine> lines = ReadLines(file);
  const auto fits = [&](const PlanLine& line) {
    return line.key == key.name || line.key == key.white + "-" + key.black || line.key == "*";
  };
  const auto first = std::find_if(lines.begin(), lines.end(), fits);
  if (first == lines.end()) return PlanByNumber(key);
  std::vector<const PlanLine*> same;
  for (const PlanLine& line : lines) {
    if (line.key == first->key) same.push_back(&line);
  }
  const auto play = static_cast<std::size_t>(std::max(key.play, 1)) - 1;
  return PlanOf(*same[std::min(play, same.size() - 1)]);
}

}  // namespace stub
