#include "play/claim.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/read_file.h"
#include "base/text.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "GAME_CLAIM";
constexpr std::string_view kExtension = ".run";
constexpr std::string_view kJob = "job ";
constexpr std::size_t kLines = 7;  ///< of a claim without a job

/// The lines of a text, without their line feeds.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    lines.push_back(text.substr(start, end - start));
  }
  return lines;
}

/// A number above 0 made of digits alone; 0 for anything else.
int NumberIn(std::string_view digits) {
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool is_whole = error == std::errc() && end == digits.data() + digits.size();
  return is_whole && digits.front() != '0' && number > 0 ? number : 0;
}

/// The number in "g7.run" behind `files_path`; 0 for any other name.
int NumberOfClaim(const std::string& path, const std::string& files_path) {
  std::string_view rest = std::string_view(path).substr(files_path.size() + 1);
  if (!rest.ends_with(kExtension)) return 0;
  rest.remove_suffix(kExtension.size());
  return rest.empty() ? 0 : NumberIn(rest);
}

std::optional<GameOrder> ReadClaim(FileSystem& files, const std::string& path) {
  return ReadClaimText(ReadFile(files, path, kGameFileLimit).value_or(""), path);
}

bool NamesJob(const std::optional<GameOrder>& order) {
  return order && !order->job.empty();
}

}  // namespace

std::string ClaimFileOf(const std::string& pgn_file) {
  const std::size_t dot = pgn_file.rfind('.');
  return dot == std::string::npos ? "" : pgn_file.substr(0, dot) + std::string(kExtension);
}

std::string ClaimText(const GameOrder& order) {
  std::string text = std::string(kHeader) + "\n" + std::to_string(order.number) + "\n";
  for (const std::string* line :
       {&order.white, &order.black, &order.batch_file, &order.pgn_file, &order.debug_file}) {
    text += *line + "\n";
  }
  if (!order.job.empty()) text += std::string(kJob) + order.job + "\n";
  return text;
}

std::optional<GameOrder> ReadClaimText(const std::string& text, const std::string& claim_file) {
  const std::vector<std::string> lines = LinesOf(text);
  const bool has_job = lines.size() == kLines + 1 && lines.back().starts_with(kJob);
  if ((lines.size() != kLines && !has_job) || lines[0] != kHeader) return std::nullopt;
  GameOrder order;
  order.number = NumberIn(lines[1]);
  if (order.number == 0) return std::nullopt;
  order.white = lines[2];
  order.black = lines[3];
  order.batch_file = lines[4];
  order.pgn_file = lines[5];
  order.debug_file = lines[6];
  order.claim_file = claim_file;
  if (has_job) order.job = lines.back().substr(kJob.size());
  return order;
}

std::unique_ptr<LockedFile> MakeClaim(FileSystem& files, const GameOrder& order) {
  LockAttempt attempt = files.Lock(order.claim_file);
  if (!attempt.file || attempt.file->Replace(ClaimText(order))) return std::move(attempt.file);
  files.Remove(order.claim_file);
  return nullptr;
}

bool HasClaim(FileSystem& files, const std::string& pgn_file) {
  const std::string claim = ClaimFileOf(pgn_file);
  return !claim.empty() && files.IsPlainFile(claim);
}

bool SyncClaim(FileSystem& files, const GameOrder& order, LockedFile& claim) {
  if (!claim.Replace(ClaimText(order))) return false;
  const auto file = files.Append(order.claim_file);
  return file && file->Sync() && file->Close() && files.SyncName(order.claim_file);
}

bool IsBeingPlayed(FileSystem& files, const std::string& pgn_file) {
  const std::string claim = ClaimFileOf(pgn_file);
  if (claim.empty() || !files.IsPlainFile(claim)) return false;
  return files.IsLocked(claim) || NamesJob(ReadClaim(files, claim));
}

std::vector<FoundClaim> FindClaims(FileSystem& files, const std::string& files_path) {
  std::vector<FoundClaim> claims;
  for (const std::string& path : files.PathsWithPrefix(files_path + "g")) {
    FoundClaim claim;
    claim.number = NumberOfClaim(path, files_path);
    if (claim.number == 0) continue;
    claim.path = path;
    claim.order = ReadClaim(files, path);
    if (claim.order && claim.order->number != claim.number) claim.order.reset();
    claim.is_held = files.IsLocked(path) || NamesJob(claim.order);
    claims.push_back(std::move(claim));
  }
  return claims;
}

bool HoldsResult(const std::string& pgn) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t end = pgn.find_last_not_of(kBlanks);
  if (end == std::string::npos) return false;
  // A line that has no end was not written to its end, and where there are NUL bytes a power
  // failure has caught a text on its way.
  if (pgn.find('\n', end) == std::string::npos || pgn.find('\0') != std::string::npos) return false;
  const std::size_t before = pgn.find_last_of(kBlanks, end);
  const std::size_t start = before == std::string::npos ? 0 : before + 1;
  const std::string_view word = std::string_view(pgn).substr(start, end + 1 - start);
  constexpr std::array<std::string_view, 3> kResults = {"1-0", "0-1", "1/2-1/2"};
  return std::find(kResults.begin(), kResults.end(), word) != kResults.end();
}

}  // namespace tarvendo
