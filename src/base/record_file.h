#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_reader.h"

namespace tarvendo {

// The form of the records that are kept one value a line (tourney, game, player): numbers as
// "%d\n", texts as "%s\n".

/// The most bytes of a text that its line has room for.
inline constexpr std::size_t kRecordText = kRecordLine - 1;

/// Makes the text of such a file. Used by one thread.
class RecordWriter {
 public:
  void WriteInt(long long value);

  /// A text for which a line has no room is cut to 254 bytes: a longer line would be read as two,
  /// and everything behind it as something else.
  void WriteString(const std::string& text);

  /// What has been written so far.
  const std::string& Text() const { return text_; }

  /// The texts that were cut, whole and in their order.
  const std::vector<std::string>& CutTexts() const { return cut_texts_; }

 private:
  std::string text_;
  std::vector<std::string> cut_texts_;
};

/// The count of a list in a damaged file may be anything. Behind the end of the file so many empty
/// records are made before the list is given up.
inline constexpr int kMostEmptyRecords = 10000;

/// Reads such a text. Used by one thread.
class RecordReader {
 public:
  /// `text` must outlive the reader.
  explicit RecordReader(std::string_view text, int most_empty_records = kMostEmptyRecords)
      : text_(text), lines_(text), most_empty_records_(most_empty_records) {}

  int MostEmptyRecords() const { return most_empty_records_; }

  /// Whether no byte is left to read.
  bool NothingLeft() const { return lines_.Position() >= text_.size(); }

  /// Reads one line and the number at its start. A line without a number, or no line, leaves the
  /// field as it was; a number out of the field's range becomes the nearest one in it.
  void ReadInt(int& field);
  void ReadLong(long long& field);

  /// Reads one line (at most 255 characters) without its last character, the line feed. No line
  /// leaves the field as it was.
  void ReadString(std::string& field);

 private:
  std::string_view text_;
  LineReader lines_;
  int most_empty_records_;
};

}  // namespace tarvendo
