#pragma once

#include <array>
#include <string_view>

namespace tarvendo {

class Tourney;

/// What a table shows. The values here are the defaults of the text table.
struct TableOptions {
  bool html = false;        ///< the HTML form instead of the text form
  bool rank = true;         ///< the column "Rank"
  bool number = true;       ///< the column "No"
  bool by_rank = true;      ///< the rows in the order of ranks instead of numbers
  bool cross = true;        ///< the columns of the opponents (round robin) or rounds (Swiss)
  bool points = true;       ///< the column "Pts"
  bool games = false;       ///< the number of games played, behind the points
  bool tie_breaks = true;   ///< the columns "Buch" (Swiss only) and "S-B"
  bool long_cells = false;  ///< "1.5/2" in place of the marks
  bool bar = false;         ///< the points drawn as a bar
  bool pictures = false;    ///< the bar of the HTML form is made of pictures
};

/// The text table when the user says nothing else: everything but games, long cells and bar.
TableOptions TextTableDefaults();

/// The HTML table when the user says nothing else: with the bar, of pictures when PicsDir is set.
/// This is also the table that is written after every game.
TableOptions HtmlTableDefaults(const Tourney& tourney);

/// One switch of the table commands: the words that turn it on and off.
struct TableSwitch {
  std::string_view on;
  std::string_view off;
  bool TableOptions::*option;
};

/// All of them, in the order in which they are explained to the user.
inline constexpr std::array<TableSwitch, 10> kTableSwitches = {{
    {"-rank", "-norank", &TableOptions::rank},
    {"-number", "-nonumber", &TableOptions::number},
    {"-byrank", "-bynumber", &TableOptions::by_rank},
    {"-cross", "-nocross", &TableOptions::cross},
    {"-points", "-nopoints", &TableOptions::points},
    {"-games", "-nogames", &TableOptions::games},
    {"-tie", "-notie", &TableOptions::tie_breaks},
    {"-long", "-nolong", &TableOptions::long_cells},
    {"-bar", "-nobar", &TableOptions::bar},
    {"-pics", "-nopics", &TableOptions::pictures},
}};

/// Does what the word says ("-nobar"), when it is a switch by its whole length, in any case of the
/// letters. False, and nothing changed, when it is none.
bool SetTableSwitch(TableOptions& options, std::string_view word);

}  // namespace tarvendo
