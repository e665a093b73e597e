#include "play/claim.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

GameOrder OrderSeven() {
  GameOrder order;
  order.number = 7;
  order.white = "Alpha";
  order.black = "Beta two";
  order.batch_file = "/t/g7.BAT";
  order.pgn_file = "/t/g7.PGN";
  order.debug_file = "/t/winboard.debug";
  order.claim_file = "/t/g7.run";
  return order;
}

class Claims : public ::testing::Test {
 protected:
  Claims() { files_.MakeDirectory("/t"); }

  MemoryFileSystem files_;
};

TEST_F(Claims, LieBesideTheRecordOfTheirGame) {
  EXPECT_EQ(ClaimFileOf("/t\\g7.PGN"), "/t\\g7.run");
  EXPECT_EQ(ClaimFileOf(""), "");
}

TEST_F(Claims, TellTheWholeOrder) {
  const std::string text = ClaimText(OrderSeven());
  EXPECT_EQ(text, "GAME_CLAIM\n7\nAlpha\nBeta two\n/t/g7.BAT\n/t/g7.PGN\n/t/winboard.debug\n");
  const auto order = ReadClaimText(text, "/t/g7.run");
  ASSERT_TRUE(order);
  EXPECT_TRUE(IsSameGame(*order, OrderSeven()));
  EXPECT_EQ(order->batch_file, "/t/g7.BAT");
  EXPECT_EQ(order->pgn_file, "/t/g7.PGN");
  EXPECT_EQ(order->debug_file, "/t/winboard.debug");
  EXPECT_EQ(order->claim_file, "/t/g7.run");
}

TEST_F(Claims, TellTheJobOfAGameThatASchedulerHas) {
  GameOrder order = OrderSeven();
  order.job = "tarvendo-t-1f3a9c-g7-1";
  const std::string text = ClaimText(order);
  EXPECT_EQ(text, ClaimText(OrderSeven()) + "job tarvendo-t-1f3a9c-g7-1\n");
  EXPECT_EQ(ReadClaimText(text, "x")->job, order.job);
  EXPECT_EQ(ReadClaimText(ClaimText(OrderSeven()), "x")->job, "");
  // It was not on the disk whole, so the job was never submitted.
  for (std::size_t cut = 1; cut <= order.job.size() + 4; ++cut)
    EXPECT_EQ(ReadClaimText(text.substr(0, text.size() - cut), "x")->job, "") << cut;
}

TEST_F(Claims, ThatNameAJobAreHeldThoughNobodyHasTheirLock) {
  GameOrder order = OrderSeven();
  order.job = "tarvendo-t-1f3a9c-g7-1";
  {
    auto claim = MakeClaim(files_, OrderSeven());
    EXPECT_TRUE(SyncClaim(files_, order, *claim));
  }
  EXPECT_FALSE(files_.IsLocked("/t/g7.run"));
  EXPECT_TRUE(IsBeingPlayed(files_, "/t/g7.PGN"));
  const auto claims = FindClaims(files_, "/t\\");
  ASSERT_EQ(claims.size(), 1U);
  EXPECT_TRUE(claims[0].is_held);
  EXPECT_EQ(claims[0].order->job, order.job);
}

TEST_F(Claims, OfGarbageAreNotUnderstood) {
  const std::string text = ClaimText(OrderSeven());
  for (std::size_t size = 0; size < text.size(); ++size)
    EXPECT_FALSE(ReadClaimText(text.substr(0, size), "x")) << size;
  EXPECT_FALSE(ReadClaimText(text + "more\n", "x"));
  EXPECT_FALSE(ReadClaimText("GAME_CLAIM\n-7\na\nb\nc\nd\ne\n", "x"));
  EXPECT_FALSE(ReadClaimText("GAME_CLAIM\n99999999999\na\nb\nc\nd\ne\n", "x"));
}

TEST_F(Claims, AreHeldUntilTheirLockIsGivenBack) {
  EXPECT_FALSE(HasClaim(files_, "/t/g7.PGN"));
  auto claim = MakeClaim(files_, OrderSeven());
  ASSERT_TRUE(claim);
  EXPECT_TRUE(HasClaim(files_, "/t/g7.PGN"));
  EXPECT_TRUE(IsBeingPlayed(files_, "/t/g7.PGN"));
  EXPECT_FALSE(MakeClaim(files_, OrderSeven())) << "somebody holds it";
  claim.reset();
  EXPECT_TRUE(HasClaim(files_, "/t/g7.PGN"));
  EXPECT_FALSE(IsBeingPlayed(files_, "/t/g7.PGN"));
}

TEST_F(Claims, CannotBeMadeWhereADirectoryHasTheirName) {
  files_.MakeDirectory("/t/g7.run");
  EXPECT_FALSE(MakeClaim(files_, OrderSeven()));
  EXPECT_FALSE(HasClaim(files_, "/t/g7.PGN"));
  EXPECT_FALSE(IsBeingPlayed(files_, "/t/g7.PGN"));
}

TEST_F(Claims, AreFoundByTheirNamesInFilesPath) {
  files_.Put("/t/g12.run", "garbage");
  files_.Put("/t/g3.run", ClaimText(OrderSeven()));
  for (const char* other : {"/t/g0.run", "/t/g07.run", "/t/gx.run", "/t/g.run", "/t/g7.runs"})
    files_.Put(other, "");
  const auto held = MakeClaim(files_, OrderSeven());
  const auto claims = FindClaims(files_, "/t\\");
  ASSERT_EQ(claims.size(), 3U);
  EXPECT_EQ(claims[0].number, 12);
  EXPECT_FALSE(claims[0].order);
  EXPECT_EQ(claims[1].number, 3);
  EXPECT_FALSE(claims[1].order) << "its text tells of another game";
  EXPECT_EQ(claims[2].number, 7);
  EXPECT_TRUE(claims[2].is_held);
  ASSERT_TRUE(claims[2].order);
  EXPECT_EQ(claims[2].order->black, "Beta two");
}

TEST(ARecord, HoldsAResultWhenThatIsItsLastWord) {
  EXPECT_TRUE(HoldsResult("[Result \"1-0\"]\n\n1. e4 e5 1-0\n\n"));
  EXPECT_TRUE(HoldsResult("1. e4\n0-1\n"));
  EXPECT_FALSE(HoldsResult("1. e4\n0-1")) << "broken off before the line feed";
  EXPECT_FALSE(HoldsResult(std::string("1. e4\0\0\0 0-1\n", 14))) << "lost in a power failure";
  EXPECT_TRUE(HoldsResult("1/2-1/2\r\n"));
  EXPECT_FALSE(HoldsResult("[Result \"1-0\"]\n\n1. e4 e5\n"));
  EXPECT_FALSE(HoldsResult("1. e4 e5 *\n"));
  EXPECT_FALSE(HoldsResult("1. e4 {1-0"));
  EXPECT_FALSE(HoldsResult(" \n"));
  EXPECT_FALSE(HoldsResult(""));
}

}  // namespace
}  // namespace tarvendo
