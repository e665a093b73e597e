#include "play/slurm.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "base/text.h"
#include "platform/letters.h"
#include "platform/paths.h"
#include "play/game_files.h"

namespace tarvendo {
namespace {

constexpr std::string_view kNamePrefix = "tarvendo-";
constexpr std::string_view kEndMark = "tarvendo-end ";
constexpr std::size_t kLongestDirectory = 24;  ///< of a job's name

constexpr std::string_view kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr std::string_view kDigits = "0123456789";

bool IsPlain(char c) {
  return IsLetter(c) || IsDigit(c) || c == '-' || c == '.' || c == '_';
}

/// A text as one word for the shell, which does nothing with what is in it.
std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char c : word)
    quoted += c == '\'' ? std::string("'\"'\"'") : std::string(1, c);
  return quoted + "'";
}

/// Slurm reads signs such as %j in the names of files.
std::string WithoutPatterns(const std::string& path) {
  std::string name;
  for (const char c : path)
    name += c == '%' ? std::string("%%") : std::string(1, c);
  return name;
}

/// The name of the last directory of a path without a separator at its end.
std::string LastName(const std::string& path) {
  std::string name = path.substr(path.find_last_of("/\\") + 1).substr(0, kLongestDirectory);
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !IsPlain(c); }, '_');
  return name;
}

/// Tells two directories of one name apart (FNV-1a, folded to 24 bits).
std::string NumberOfPath(const std::string& path) {
  std::uint32_t hash = 2166136261U;
  for (const char c : path)
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return Format("%06x", (hash >> 24U) ^ (hash & 0xFFFFFFU));
}

/// Standard error belongs to the answer, and its last line tells that it is whole.
std::string Asked(const std::string& command) {
  return command + " 2>&1; printf '\\n" + std::string(kEndMark) + "%d\\n' \"$?\"";
}

std::vector<std::string_view> LinesOfAnswer(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (end > 0) lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// Takes the text up to the first `separator` off the line, and the separator. Nothing when there
/// is none.
std::optional<std::string> TakeField(std::string_view& line, char separator) {
  const std::size_t end = line.find(separator);
  if (end == std::string_view::npos) return std::nullopt;
  std::string field(line.substr(0, end));
  line.remove_prefix(end + 1);
  return field;
}

bool IsMadeOf(std::string_view text, std::string_view characters) {
  return !text.empty() && text.find_first_not_of(characters) == std::string_view::npos;
}

/// "1234 RUNNING tarvendo-t-1f3a9c-g7-t3k2j1 None"; the names of other people's jobs, and reasons,
/// may hold anything.
std::optional<SlurmJob> ReadJob(std::string_view line) {
  SlurmJob job;
  const auto number = TakeField(line, ' ');
  const auto word = TakeField(line, ' ');
  if (!number || !word || kDigits.find(number->front()) == std::string_view::npos) {
    return std::nullopt;
  }
  if (!IsMadeOf(*word, kCapitals)) return std::nullopt;
  job.number = *number;
  job.word = *word;
  job.name = TakeField(line, ' ').value_or("");
  if (line != "None" && line != "(null)") job.reason = line;
  return job;
}

/// Which of two jobs of one name counts: the lower one.
int Rank(const SlurmJob& job) {
  if (job.State() != SlurmState::kEnded) return 0;
  return job.word == "COMPLETED" ? 1 : 2;
}

}  // namespace

std::vector<std::string> SplitSlurmWords(const std::string& text) {
  std::vector<std::string> words;
  char quote = '\0';
  bool is_in_word = false;
  for (const char c : text) {
    if (quote == '\0' && (c == ' ' || c == '\t')) {
      is_in_word = false;
      continue;
    }
    if (!is_in_word) words.emplace_back();
    is_in_word = true;
    if (quote == '\0' && (c == '"' || c == '\'')) {
      quote = c;
    } else if (c == quote && quote != '\0') {
      quote = '\0';
    } else {
      words.back() += c;
    }
  }
  return words;
}

std::string SlurmJobName(const std::string& directory, int number, const std::string& stamp) {
  return std::string(kNamePrefix) + LastName(directory) + "-" + NumberOfPath(directory) + "-g" +
         std::to_string(number) + "-" + stamp;
}

std::string SlurmOutputFile(const GameOrder& order) {
  return GameFileBeside(order.pgn_file, ".out");
}

std::string SlurmSubmitLine(const GameOrder& order, const SlurmOptions& options) {
  std::string play =
      "exec " + Quoted(HostPath(options.program)) + " --play " + Quoted(HostPath(order.claim_file));
  if (options.patience > 0) play += " --patience " + std::to_string(options.patience);
  // A job whose node is lost is queued again, unless the user's settings or --cluster-options say
  // otherwise. Settings that make many jobs of one, or let sbatch wait for the end, are not for
  // games.
  std::string command =
      "unset SBATCH_WAIT SBATCH_ARRAY_INX; set --; "
      "[ -n \"${SBATCH_NO_REQUEUE+set}\" ] || set -- --requeue; sbatch \"$@\"";
  for (const std::string& word : options.words)
    command += " " + Quoted(word);
  for (const std::string& word :
       {std::string("--parsable"), "--job-name=" + order.job,
        "--output=" + WithoutPatterns(HostPath(SlurmOutputFile(order))),
        "--chdir=" + HostPath(DirectoryOf(order.batch_file)), "--wrap=" + play}) {
    command += " " + Quoted(word);
  }
  return Asked(command);
}

std::string SlurmQueueLine() {
  // What users set for their own squeue could hide jobs.
  return Asked(
      "unset SQUEUE_ACCOUNT SQUEUE_ALL SQUEUE_ARRAY SQUEUE_ARRAY_UNIQUE SQUEUE_FORMAT "
      "SQUEUE_FORMAT2 SQUEUE_LICENSES SQUEUE_LOCAL SQUEUE_NAMES SQUEUE_PARTITION SQUEUE_QOS "
      "SQUEUE_SORT SQUEUE_STATES SQUEUE_USERS; "
      "squeue --me --states=all --noheader '--format=%i %T %j %r'");
}

std::optional<SlurmAnswer> ReadSlurmAnswer(const std::string& output) {
  const std::size_t mark = output.rfind(kEndMark);
  if (mark == std::string::npos || !output.ends_with('\n')) return std::nullopt;
  const std::size_t at = mark + kEndMark.size();
  const std::string code = output.substr(at, output.size() - at - 1);
  if (!IsMadeOf(code, kDigits)) return std::nullopt;
  SlurmAnswer answer;
  answer.exit_code = ToInt(code);
  answer.text = output.substr(0, mark);
  answer.text.erase(answer.text.find_last_not_of(" \n") + 1);
  return answer;
}

std::string SlurmJobNumber(const std::string& text) {
  std::string number;
  // "1234", or "1234;cluster"; a cluster's own plugins may say more.
  for (const std::string_view line : LinesOfAnswer(text)) {
    const std::string_view digits = line.substr(0, line.find(';'));
    if (IsMadeOf(digits, kDigits)) number = digits;
  }
  return number;
}

SlurmState SlurmJob::State() const {
  constexpr std::array<std::string_view, 9> kEnds = {"COMPLETED", "CANCELLED", "FAILED",
                                                     "TIMEOUT",   "NODE_FAIL", "PREEMPTED",
                                                     "BOOT_FAIL", "DEADLINE",  "OUT_OF_MEMORY"};
  if (std::find(kEnds.begin(), kEnds.end(), word) != kEnds.end()) return SlurmState::kEnded;
  if (word == "COMPLETING") return SlurmState::kLeaves;
  return word == "RUNNING" ? SlurmState::kRuns : SlurmState::kWaits;
}

std::optional<SlurmQueue> ReadSlurmQueue(const std::string& text, std::string& bad_line) {
  SlurmQueue jobs;
  for (const std::string_view line : LinesOfAnswer(text)) {
    std::optional<SlurmJob> job = ReadJob(line);
    if (!job) {
      bad_line = line;
      return std::nullopt;
    }
    if (!job->name.starts_with(kNamePrefix)) continue;
    const auto [known, is_new] = jobs.try_emplace(job->name, *job);
    if (!is_new && Rank(*job) < Rank(known->second)) known->second = *job;
  }
  return jobs;
}

}  // namespace tarvendo
