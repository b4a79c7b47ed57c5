#include "search/SolutionExchange.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "system/EndGuard.h"

namespace starsift {
namespace {

Star<QQ> starOfNorm(int norm) {
  Star<QQ> star;
  star.targetNorm = QQ(norm);
  return star;
}

TEST(SolutionExchange, NewsBecomeBetterAndBetter) {
  SolutionExchange exchange;
  EXPECT_FALSE(exchange.leastNorm());
  for (const int norm : {7, 7, 9, 4, 5, -1}) exchange.post(starOfNorm(norm));
  EXPECT_EQ(exchange.leastNorm(), QQ(-1));
  const auto news = exchange.takeNews();
  ASSERT_EQ(news.size(), 3U);
  EXPECT_EQ(news[0].targetNorm, QQ(7));
  EXPECT_EQ(news[1].targetNorm, QQ(4));
  EXPECT_EQ(news[2].targetNorm, QQ(-1));
  EXPECT_TRUE(exchange.takeNews().empty());
  // Also than those that were taken.
  exchange.post(starOfNorm(0));
  EXPECT_TRUE(exchange.takeNews().empty());
}

TEST(SolutionExchange, FailsByTheFirstException) {
  SolutionExchange exchange;
  exchange.rethrow();
  exchange.fail(std::make_exception_ptr(std::runtime_error("first")));
  exchange.fail(std::make_exception_ptr(std::logic_error("second")));
  EXPECT_TRUE(exchange.isEnded());
  EXPECT_THROW(exchange.rethrow(), std::runtime_error);
}

TEST(SolutionExchange, EndsWithItsCaller) {
  SolutionExchange exchange;
  {
    const EndGuard ending(exchange);
    EXPECT_FALSE(exchange.isEnded());
  }
  EXPECT_TRUE(exchange.isEnded());
}

}  // namespace
}  // namespace starsift
