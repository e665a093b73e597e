#include "publish/csv_files.h"

#include "base/text.h"
#include "publish/report_model.h"

namespace tarvendo {
namespace {

/// Writes the fields of lines.
class CsvLine {
 public:
  explicit CsvLine(std::string& text) : text_(text) {}

  CsvLine& Text(const std::string& value) {
    Begin();
    if (value.find_first_of(",\"\r\n") == std::string::npos) {
      text_ += value;
      return *this;
    }
    text_ += '"';
    for (const char c : value) {
      if (c == '"') text_ += '"';
      text_ += c;
    }
    text_ += '"';
    return *this;
  }

  CsvLine& Number(int value) {
    Begin();
    text_ += std::to_string(value);
    return *this;
  }

  CsvLine& Number(const std::optional<int>& value) { return value ? Number(*value) : Empty(); }

  CsvLine& Decimal(const std::optional<double>& value, int digits) {
    if (!value) return Empty();
    Begin();
    const std::string number = Format("%.*f", digits, *value);
    // Nothing has no sign: "-0.0" is what a small negative number is rounded to.
    const bool is_zero = number.find_first_of("123456789") == std::string::npos;
    text_ += is_zero && number.starts_with('-') ? number.substr(1) : number;
    return *this;
  }

  CsvLine& Empty() {
    Begin();
    return *this;
  }

  void End() { text_ += '\n'; }

 private:
  void Begin() {
    if (!is_first_) text_ += ',';
    is_first_ = false;
  }

  std::string& text_;
  bool is_first_ = true;
};

const char* KindText(EloKind kind) {
  switch (kind) {
    case EloKind::kRated:
      return "rated";
    case EloKind::kAtLeast:
      return "at least";
    case EloKind::kAtMost:
      return "at most";
    case EloKind::kNone:
      break;
  }
  return "none";
}

void AddRating(CsvLine& line, const EloRating& rating) {
  const bool has_number = rating.kind != EloKind::kNone;
  line.Text(KindText(rating.kind));
  line.Decimal(has_number ? std::optional(rating.elo) : std::nullopt, 1);
  line.Decimal(rating.margin ? std::optional(rating.elo - *rating.margin) : std::nullopt, 1);
  line.Decimal(rating.margin ? std::optional(rating.elo + *rating.margin) : std::nullopt, 1);
  line.Number(rating.group > 0 ? std::optional(rating.group) : std::nullopt);
}

}  // namespace

std::string StandingsCsv(const Report& report) {
  std::string text =
      "rank,number,name,bye,points,games,won,drawn,lost,percent,"
      "rating,elo,elo_low,elo_high,group,buchholz,sonneborn_berger\n";
  for (const std::size_t index : report.order) {
    const ReportParticipant& shown = report.participants[index];
    CsvLine line(text);
    line.Number(shown.is_bye ? std::nullopt : std::optional(shown.rank));
    line.Number(shown.number).Text(shown.name).Text(shown.is_bye ? "yes" : "no");
    line.Decimal(InPoints(shown.points), 1);
    for (const int count : {shown.games, shown.wins, shown.draws, shown.losses})
      line.Number(count);
    line.Decimal(shown.Percent(), 1);
    AddRating(line, report.elo.Of(index));
    line.Decimal(InPoints(shown.buchholz), 2).Decimal(InPoints(shown.sonneborn_berger), 2).End();
  }
  return text;
}

std::string GamesCsv(const Report& report) {
  std::string text =
      "game,round,sub_round,white,black,state,result,ending,termination,plies,seconds\n";
  text.reserve(text.size() + report.games.size() * 96);
  for (const ReportGame& game : report.games) {
    CsvLine line(text);
    line.Number(game.number).Number(game.round).Number(game.sub_round);
    line.Text(game.white_name).Text(game.black_name).Text(StateOfGame(game));
    line.Text(game.state == ReportGameState::kPlayed ? PgnResult(game) : "");
    line.Text(game.ending).Text(game.termination).Number(game.plies).Number(game.seconds).End();
  }
  return text;
}

}  // namespace tarvendo
