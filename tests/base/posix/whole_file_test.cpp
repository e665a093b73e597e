#include "base/whole_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/files.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

constexpr uid_t kSomebody = 65534;

/// The real files of a directory in which everybody may make files.
class PosixWholeFile : public testing::Test {
 protected:
  PosixWholeFile() { chmod(directory_.Path().c_str(), 0777); }

  std::string HostName(const std::string& name) const { return directory_.Path() + "/" + name; }

  void PutWithPermissions(const std::string& name, mode_t permissions) {
    directory_.Put(name, "old\n");
    ASSERT_EQ(chmod(HostName(name).c_str(), permissions), 0);
  }

  struct stat StatusOf(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(stat(HostName(name).c_str(), &status), 0);
    return status;
  }

  mode_t PermissionsOf(const std::string& name) const { return StatusOf(name).st_mode & 07777; }

  bool Save(const std::string& name) {
    return SaveWholeFile(*files_, directory_.File(name), "new\n");
  }

  long CountFiles() const {
    const std::filesystem::directory_iterator all(directory_.Path());
    return std::distance(all, std::filesystem::directory_iterator());
  }

  ScratchDirectory directory_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
};

/// The superuser may write to everything; as long as this lives the test is somebody else.
class AsSomebody {
 public:
  AsSomebody() : before_(geteuid()) {
    if (before_ == 0) is_somebody_ = seteuid(kSomebody) == 0;
  }
  ~AsSomebody() {
    if (before_ == 0 && seteuid(before_) != 0) std::abort();
  }
  AsSomebody(const AsSomebody&) = delete;
  AsSomebody& operator=(const AsSomebody&) = delete;

  bool IsOrdinaryUser() const { return is_somebody_; }

 private:
  uid_t before_;
  bool is_somebody_ = true;
};

TEST_F(PosixWholeFile, AReadOnlyFileIsNotReplaced) {
  PutWithPermissions("a.txt", 0444);
  {
    const AsSomebody somebody;
    ASSERT_TRUE(somebody.IsOrdinaryUser());
    EXPECT_FALSE(Save("a.txt"));
  }
  EXPECT_EQ(directory_.Bytes("a.txt"), "old\n");
  EXPECT_EQ(PermissionsOf("a.txt"), 0444U);
  EXPECT_EQ(CountFiles(), 1);
}

TEST_F(PosixWholeFile, ThePermissionsStayWhatTheyWere) {
  for (const mode_t permissions : {0600U, 0640U, 0666U, 0755U}) {
    PutWithPermissions("a.txt", permissions);
    EXPECT_TRUE(Save("a.txt"));
    EXPECT_EQ(directory_.Bytes("a.txt"), "new\n");
    EXPECT_EQ(PermissionsOf("a.txt"), permissions);
  }
}

TEST_F(PosixWholeFile, ANewFileHasThePermissionsOfAnyNewFile) {
  const mode_t before = umask(027);
  EXPECT_TRUE(Save("a.txt"));
  umask(before);
  EXPECT_EQ(PermissionsOf("a.txt"), 0640U);
}

TEST_F(PosixWholeFile, TheFileOfAnotherKeepsAsMuchOfItsOwnerAsTheHostAllows) {
  PutWithPermissions("a.txt", 0666);
  const bool may_give_away = chown(HostName("a.txt").c_str(), kSomebody, kSomebody) == 0;
  EXPECT_TRUE(Save("a.txt"));
  EXPECT_EQ(StatusOf("a.txt").st_uid, may_give_away ? kSomebody : geteuid());
  EXPECT_EQ(PermissionsOf("a.txt"), 0666U);
}

TEST_F(PosixWholeFile, WhatALostGroupWasAllowedNoOtherGroupIs) {
  constexpr gid_t kOtherGroup = 1;
  PutWithPermissions("a.txt", 0666);
  const bool has_other_group = chown(HostName("a.txt").c_str(), geteuid(), kOtherGroup) == 0;
  {
    const AsSomebody somebody;
    EXPECT_TRUE(Save("a.txt"));
  }
  EXPECT_EQ(directory_.Bytes("a.txt"), "new\n");
  const bool lost_group = has_other_group && StatusOf("a.txt").st_gid != kOtherGroup;
  EXPECT_EQ(lost_group, has_other_group);
  EXPECT_EQ(PermissionsOf("a.txt"), lost_group ? 0606U : 0666U);
}

TEST_F(PosixWholeFile, WhoeverSavedTheFileOfAnotherMayChangeItAgain) {
  PutWithPermissions("a.txt", 0066);
  const bool is_another = geteuid() == 0;  // To his own file the rights of others do not apply.
  const AsSomebody somebody;
  EXPECT_EQ(Save("a.txt"), is_another);
  EXPECT_EQ(Save("a.txt"), is_another);
  EXPECT_EQ(PermissionsOf("a.txt"), is_another ? 0666U : 0066U);
}

TEST_F(PosixWholeFile, ALinkStaysALinkAndItsTargetIsReplaced) {
  std::filesystem::create_directory(HostName("d"));
  PutWithPermissions("d/a.txt", 0640);
  std::filesystem::create_symlink("d/a.txt", HostName("link"));
  EXPECT_TRUE(Save("link"));
  EXPECT_TRUE(std::filesystem::is_symlink(HostName("link")));
  EXPECT_EQ(directory_.Bytes("d/a.txt"), "new\n");
  EXPECT_EQ(PermissionsOf("d/a.txt"), 0640U);
  EXPECT_EQ(CountFiles(), 2);
}

TEST_F(PosixWholeFile, ALinkToAFileWithABackslashInItsNameIsWrittenInPlace) {
  PutWithPermissions("a\\b", 0640);
  std::filesystem::create_symlink("a\\b", HostName("link"));
  EXPECT_TRUE(Save("link"));
  EXPECT_EQ(directory_.Bytes("a\\b"), "new\n");
  EXPECT_EQ(CountFiles(), 2);
}

TEST_F(PosixWholeFile, LinksThatLeadToEachOtherAreAFailure) {
  std::filesystem::create_symlink("b", HostName("a"));
  std::filesystem::create_symlink("a", HostName("b"));
  EXPECT_FALSE(Save("a"));
  EXPECT_EQ(CountFiles(), 2);
}

TEST_F(PosixWholeFile, AFullDeviceIsReported) {
  EXPECT_FALSE(SaveWholeFile(*files_, "/dev/full", "new\n"));
}

}  // namespace
}  // namespace tarvendo
