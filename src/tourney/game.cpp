#include "tourney/game.h"

#include "base/record_file.h"

namespace tarvendo {

void Game::WriteRecord(RecordWriter& writer) const {
  for (const int value : {black, number, result, round, spool_index, status, sub_round, white}) {
    writer.WriteInt(value);
  }
  for (const std::string* text : {&bat_file, &black_player, &pgn_file, &white_player}) {
    writer.WriteString(*text);
  }
}

void Game::ReadRecord(RecordReader& reader) {
  for (int* field : {&black, &number, &result, &round, &spool_index, &status, &sub_round, &white}) {
    reader.ReadInt(*field);
  }
  for (std::string* text : {&bat_file, &black_player, &pgn_file, &white_player}) {
    reader.ReadString(*text);
  }
}

const char* ResultText(int result) {
  switch (result) {
    case kWhiteWins:
      return "1 - 0";
    case kBlackWins:
      return "0 - 1";
    case kDraw:
      return "1/2 - 1/2";
    case kBothLose:
      return "0 - 0";
    default:
      return "*";
  }
}

}  // namespace tarvendo
