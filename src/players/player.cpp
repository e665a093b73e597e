#include "players/player.h"

#include <utility>

#include "base/record_file.h"
#include "base/text.h"
#include "platform/faults.h"

namespace tarvendo {

Player::Player(PlayerTexts player_texts) : texts(std::move(player_texts)) {
  if (texts.name.empty()) texts.name = "PlayerName";
}

void Player::WriteRecord(RecordWriter& writer) const {
  for (const int value : {tourney_flag, buchholz, colour_state, games_played, number, points, rank,
                          sonneborn_berger}) {
    writer.WriteInt(value);
  }
  for (const std::string* text :
       {&texts.black_options, &texts.dir, &texts.group, &texts.init_string, &texts.name,
        &texts.program_exe, &texts.white_options}) {
    writer.WriteString(*text);
  }
  writer.WriteInt(static_cast<long long>(games.size()));
  for (const int game : games)
    writer.WriteInt(game);
}

void Player::ReadRecord(RecordReader& reader) {
  for (int* field : {&tourney_flag, &buchholz, &colour_state, &games_played, &number, &points,
                     &rank, &sonneborn_berger}) {
    reader.ReadInt(*field);
  }
  tourney_flag = tourney_flag != 0 ? 1 : 0;
  for (std::string* text : {&texts.black_options, &texts.dir, &texts.group, &texts.init_string,
                            &texts.name, &texts.program_exe, &texts.white_options}) {
    reader.ReadString(*text);
  }
  int count = 0;
  reader.ReadInt(count);
  for (int i = 0; i < count && !reader.NothingLeft() && games.size() <= kMostInHistories; ++i) {
    EndWhenAsked();
    int game = -1;
    reader.ReadInt(game);
    games.push_back(game);
  }
}

bool IsBye(const Player& player) {
  return player.texts.program_exe == "bye";
}

std::string PlayerGroupLine(const Player& player) {
  const std::string line = Format("%2d. %-20s", player.number, player.texts.name.c_str());
  if (player.texts.group.empty()) return line + "\n";
  return line + "  Groups: " + player.texts.group + "\n";
}

std::string PlayerData(const Player& player) {
  const PlayerTexts& texts = player.texts;
  return Format("Player number %d:\n", player.number) +            //
         "    Name         : " + texts.name + "\n" +               //
         "    ProgramExe   : " + texts.program_exe + "\n" +        //
         "    Group        : " + texts.group + "\n" +              //
         "    WhiteOptions : " + texts.white_options + "\n" +      //
         "    BlackOptions : " + texts.black_options + "\n" +      //
         "    Dir          : " + texts.dir + "\n" +                //
         "    InitString   : " + texts.init_string + "\n\n" +      //
         Format("    Rank         : %d.\n", player.rank) +         //
         "    Points       : " + HalfPointText(player.points) +    //
         Format(" / %d.0\n", player.games_played) +                //
         "    Buchholz     : " + HalfPointText(player.buchholz) +  //
         "\n    Sonneborn-B  : " + QuarterPointText(player.sonneborn_berger) + "\n";
}

}  // namespace tarvendo
