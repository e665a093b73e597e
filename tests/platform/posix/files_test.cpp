#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

TEST(PosixFiles, AFullDiskIsReported) {
  const auto file = MakeFileSystem()->Create("/dev/full");
  ASSERT_NE(file, nullptr);
  file->Write("text");
  EXPECT_FALSE(file->Flush());
  EXPECT_FALSE(file->Write("more"));
  EXPECT_FALSE(file->Close());
}

TEST(PosixFiles, AFullDiskIsReportedByCloseAlone) {
  const auto file = MakeFileSystem()->Create("/dev/full");
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Write("text"));
  EXPECT_FALSE(file->Close());
}

TEST(PosixFiles, LinksAndDevicesAreNoPlainFiles) {
  const ScratchDirectory directory;
  directory.Put("x", "");
  std::filesystem::create_symlink("x", directory.Path() + "/link");
  std::filesystem::create_symlink("nothing", directory.Path() + "/broken");
  const auto files = MakeFileSystem();
  EXPECT_FALSE(files->IsPlainFile(directory.File("link")));
  EXPECT_TRUE(files->IsReadable(directory.File("link")));
  EXPECT_TRUE(files->Exists(directory.File("broken")));
  EXPECT_FALSE(files->IsReadable(directory.File("broken")));
  EXPECT_FALSE(files->IsPlainFile("/dev/null"));
}

TEST(PosixFiles, ChildProcessesDoNotInheritOpenFiles) {
  const ScratchDirectory directory;
  const auto files = MakeFileSystem();
  const auto file = files->Create(directory.File("inherited"));
  ASSERT_NE(file, nullptr);
  const std::string line = "for f in /proc/$$/fd/*; do readlink $f; done; echo done";
  ASSERT_EQ(MakeProcesses()->RunShell(line, directory.File("out")), ShellOutcome::kRan);
  const std::string open_files = directory.Bytes("out");
  EXPECT_NE(open_files.find("done"), std::string::npos);
  EXPECT_EQ(open_files.find("inherited"), std::string::npos) << open_files;
}

}  // namespace
}  // namespace tarvendo
