#pragma once

#include <memory>
#include <string>

namespace tarvendo {

class FileSystem;

/// The base of the records that are kept one value a line (tourney, game, player): numbers as
/// "%d\n", texts as "%s\n". A record opens a file of its own, or takes part in one that another
/// record has open. Copies of a record never share its open file. Used by one thread at a time.
class RecordFile {
 public:
  struct Stream;

  RecordFile() = default;
  RecordFile(const RecordFile&) noexcept {}
  // Nothing is taken over, so nothing can go wrong when a record is assigned to itself.
  // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
  RecordFile& operator=(const RecordFile&) noexcept { return *this; }
  virtual ~RecordFile();

  /// Begins writing to the file `name`, closing an open one. What is written reaches the file when
  /// it is closed, whole or not at all (base/whole_file.h). False when there is no name.
  bool OpenWrite(FileSystem& files, const std::string& name);

  /// Begins reading the file `name`, closing an open one. False when it cannot be opened.
  bool OpenRead(FileSystem& files, const std::string& name);

  /// Begins writing to a text that TakeText gives; no file is made.
  void OpenText();
  std::string TakeText();

  /// Closes the open file, if any. False when what was written could not be saved. A file that this
  /// record only takes part in is left to the record that opened it.
  bool Close();

  /// Takes part in the file that `opener` has open, until Detach.
  void Attach(const RecordFile& opener);
  void Detach();

  /// Whether no byte is left to read (also when no file is open).
  bool NothingLeft() const;

 protected:
  void WriteInt(long long value);
  void WriteString(const std::string& text);

  /// Reads one line and the number at its start. A line without a number, or no line, leaves the
  /// field as it was; a number out of the field's range becomes the nearest one in it.
  void ReadInt(int& field);
  void ReadLong(long long& field);

  /// Reads one line (at most 255 characters) without its last character, the line feed. No line
  /// leaves the field as it was.
  void ReadString(std::string& field);

 private:
  std::shared_ptr<Stream> stream_;
  bool opened_it_ = false;
};

}  // namespace tarvendo
