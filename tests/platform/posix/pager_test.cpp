#include "platform/posix/pager.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

/// Changes a variable of the environment for one test.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    const char* const before = std::getenv(name);
    had_ = before != nullptr;
    before_ = had_ ? before : "";
    Set(value);
  }
  ~Variable() { Set(had_ ? before_.c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Set(const char* value) {
    if (value != nullptr) {
      setenv(name_, value, 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  bool had_;
  std::string before_;
};

TEST(Pager, TheUsersIsTaken) {
  const Variable pager("PAGER", "most -w");
  EXPECT_EQ(UsersPager(), "most -w");
}

TEST(Pager, WhoWantsNoneSaysSo) {
  for (const char* const none : {"", "cat"}) {
    const Variable pager("PAGER", none);
    EXPECT_EQ(UsersPager(), "") << none;
  }
}

TEST(Pager, WhoSaysNothingGetsLessOrMore) {
  const ScratchDirectory directory;
  const Variable pager("PAGER", nullptr);
  const std::string path = "/nowhere:" + directory.Path();
  const Variable search("PATH", path.c_str());
  EXPECT_EQ(UsersPager(), "");
  directory.Put("more", "");
  chmod((directory.Path() + "/more").c_str(), 0700);
  EXPECT_EQ(UsersPager(), "more");
  directory.Put("less", "");
  EXPECT_EQ(UsersPager(), "more");
  chmod((directory.Path() + "/less").c_str(), 0700);
  EXPECT_EQ(UsersPager(), "less");
}

TEST(Pager, ATextFitsWhenThePromptBehindItDoes) {
  const std::string lines = "one\ntwo\nthree\n";
  EXPECT_FALSE(IsLongerThanScreen(lines, 5, 80));
  EXPECT_TRUE(IsLongerThanScreen(lines, 4, 80));
}

TEST(Pager, ALongLineTakesSeveralRows) {
  const std::string line(25, 'x');
  EXPECT_FALSE(IsLongerThanScreen(line + "\n", 5, 10));
  EXPECT_TRUE(IsLongerThanScreen(line + "\n", 4, 10));
  EXPECT_FALSE(IsLongerThanScreen(std::string(10, 'x') + "\n", 3, 10));
}

TEST(Pager, GetsTheTextWhole) {
  const ScratchDirectory directory;
  const std::string text(300000, 'x');
  EXPECT_TRUE(RunPager("cat >" + directory.Path() + "/shown", text));
  EXPECT_EQ(directory.Bytes("shown"), text);
}

TEST(Pager, OneThatIsLeftEarlyHasShownTheText) {
  EXPECT_TRUE(RunPager("true", std::string(300000, 'x')));
  EXPECT_TRUE(RunPager("exit 1", "x"));
}

TEST(Pager, OneThatCannotBeRunShowsNothing) {
  EXPECT_FALSE(RunPager("no-such-pager 2>/dev/null", "x"));
}

}  // namespace
}  // namespace tarvendo
