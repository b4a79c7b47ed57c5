// The locale of the functions of C in one thread.
#pragma once

#include <clocale>

namespace starsift {

/// During its lifetime the functions of C (printf, strtold, tolower) use another locale in the
/// calling thread than setlocale() says. May be nested.
class ThreadLocale {
 public:
  /// `locale` lives longer.
  explicit ThreadLocale(locale_t locale) : before_(uselocale(locale)) {}
  ThreadLocale(const ThreadLocale&) = delete;
  ThreadLocale& operator=(const ThreadLocale&) = delete;
  ~ThreadLocale() { uselocale(before_); }

  /// That of "C", in which decimals begin with a point.
  static locale_t classic();
  /// That of the calling thread.
  static locale_t current() { return uselocale(nullptr); }

 private:
  locale_t before_;
};

}  // namespace starsift
