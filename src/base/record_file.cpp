#include "base/record_file.h"

#include <algorithm>
#include <limits>

#include "base/line_reader.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/files.h"

namespace tarvendo {

struct RecordFile::Stream {
  explicit Stream(std::string text_to_read) : input(std::move(text_to_read)), reader(input) {}
  Stream(FileSystem& to, std::string to_name)
      : files(&to), name(std::move(to_name)), reader(input) {}

  FileSystem* files = nullptr;  ///< where to save; null for a file that is read
  std::string name;
  std::string output;
  std::string input;
  LineReader reader;
};

RecordFile::~RecordFile() = default;

bool RecordFile::OpenWrite(FileSystem& files, const std::string& name) {
  Close();
  if (name.empty()) return false;
  stream_ = std::make_shared<Stream>(files, name);
  opened_it_ = true;
  return true;
}

bool RecordFile::OpenRead(FileSystem& files, const std::string& name) {
  Close();
  auto text = files.ReadText(name);
  if (!text) return false;
  stream_ = std::make_shared<Stream>(std::move(*text));
  opened_it_ = true;
  return true;
}

void RecordFile::OpenText() {
  Close();
  stream_ = std::make_shared<Stream>(std::string());
}

std::string RecordFile::TakeText() {
  std::string text = stream_ ? std::move(stream_->output) : std::string();
  Detach();
  return text;
}

bool RecordFile::Close() {
  const std::shared_ptr<Stream> stream = std::move(stream_);
  const bool opened_it = opened_it_;
  Detach();
  if (!stream || !opened_it || stream->files == nullptr) return true;
  return SaveWholeFile(*stream->files, stream->name, stream->output);
}

void RecordFile::Attach(const RecordFile& opener) {
  stream_ = opener.stream_;
  opened_it_ = false;
}

void RecordFile::Detach() {
  stream_.reset();
  opened_it_ = false;
}

bool RecordFile::NothingLeft() const {
  return !stream_ || stream_->reader.Position() >= stream_->input.size();
}

void RecordFile::WriteInt(long long value) {
  if (stream_) stream_->output.append(std::to_string(value)).append("\n");
}

void RecordFile::WriteString(const std::string& text) {
  if (stream_) stream_->output.append(text).append("\n");
}

void RecordFile::ReadInt(int& field) {
  long long value = field;
  ReadLong(value);
  field = static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                 std::numeric_limits<int>::max()));
}

void RecordFile::ReadLong(long long& field) {
  if (!stream_) return;
  if (const auto line = stream_->reader.Read(kRecordLine)) Scanner(*line).ReadNumber(field);
}

void RecordFile::ReadString(std::string& field) {
  if (!stream_) return;
  auto line = stream_->reader.Read(kRecordLine);
  if (!line) return;
  if (!line->empty()) line->pop_back();
  field = std::move(*line);
}

}  // namespace tarvendo
