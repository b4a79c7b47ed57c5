#include "numbers/QQ.h"

#include <memory>
#include <numeric>
#include <type_traits>

#include "numbers/QQStorage.h"
#include "system/Failure.h"

namespace starsift {

namespace {

using Rational = std::remove_pointer_t<mpq_ptr>;

mpq_ptr newRational() {
  auto rational = std::make_unique<Rational>();
  mpq_init(rational.get());
  return rational.release();
}

/// Holds a result while it is computed, if the target is small. Limbs are reused.
class Scratch {
 public:
  Scratch() noexcept : rational_() { mpq_init(rational_); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { mpq_clear(rational_); }
  mpq_ptr get() noexcept { return rational_; }

 private:
  mpq_t rational_;
};

bool fitsSmall(mpq_srcptr rational) {
  return mpz_sizeinbase(mpq_denref(rational), 2) <= 32 &&
         mpz_sizeinbase(mpq_numref(rational), 2) <= 62;
}

void assign(mpz_ptr target, UInt128 value) {
  mpz_set(target, WideView(value).get());
}

}  // namespace

QQView::QQView(const QQ& value) noexcept : small_(), rational_(small_) {
  if (value.isBig()) {
    rational_ = value.big();
    return;
  }
  numeratorLimb_ = static_cast<mp_limb_t>(value.word_ < 0 ? -value.word_ : value.word_);
  denominatorLimb_ = value.tag_;
  mpz_roinit_n(mpq_numref(small_), &numeratorLimb_, value.word_ < 0 ? -1 : 1);
  mpz_roinit_n(mpq_denref(small_), &denominatorLimb_, 1);
}

mpq_ptr QQStorage::workplace(QQ& target) noexcept {
  thread_local Scratch scratch;
  return target.isBig() ? target.big() : scratch.get();
}

void QQStorage::finish(QQ& target, mpq_ptr result) {
  if (fitsSmall(result)) {
    const std::int64_t numerator = mpz_get_si(mpq_numref(result));
    const std::uint64_t denominator = mpz_get_ui(mpq_denref(result));
    if (target.isBig()) target.freeBig();
    target.word_ = numerator;
    target.tag_ = denominator;
  } else if (!target.isBig()) {
    auto* const fresh = newRational();
    mpq_swap(fresh, result);
    target.word_ = std::bit_cast<std::int64_t>(fresh);
    target.tag_ = QQ::bigTag;
  }
}

void QQStorage::set(QQ& target, Int128 numerator, UInt128 denominator) {
  const UInt128 size = magnitude(numerator);
  if ((size >> 62) == 0 && (denominator >> 32) == 0) {
    if (target.isBig()) target.freeBig();
    target.word_ = static_cast<std::int64_t>(numerator);
    target.tag_ = static_cast<std::uint64_t>(denominator);
    return;
  }
  auto* const result = workplace(target);
  assign(mpq_numref(result), size);
  if (numerator < 0) mpq_neg(result, result);
  assign(mpq_denref(result), denominator);
  finish(target, result);
}

void QQStorage::setReduced(QQ& target, Int128 numerator, std::uint64_t denominator) {
  if (denominator == 1) return set(target, numerator, 1);
  const UInt128 size = magnitude(numerator);
  const std::uint64_t rest = (size >> 64) == 0 ? static_cast<std::uint64_t>(size) % denominator
                                               : static_cast<std::uint64_t>(size % denominator);
  const std::uint64_t common = std::gcd(rest, denominator);
  if (common == 1) return set(target, numerator, denominator);
  set(target, numerator / static_cast<Int128>(common), denominator / common);
}

void QQStorage::setWide(QQ& target, UInt128 numerator, UInt128 denominator) {
  auto* const result = workplace(target);
  assign(mpq_numref(result), numerator);
  assign(mpq_denref(result), denominator);
  if (denominator != 1) mpq_canonicalize(result);
  finish(target, result);
}

QQ::QQ(const ZZ& value) {
  auto* const result = QQStorage::workplace(*this);
  mpq_set_z(result, value.get());
  QQStorage::finish(*this, result);
}

QQ::QQ(const ZZ& numerator, const ZZ& denominator) {
  if (denominator.isZero()) fail("QQ: division by zero");
  auto* const result = QQStorage::workplace(*this);
  mpz_set(mpq_numref(result), numerator.get());
  mpz_set(mpq_denref(result), denominator.get());
  mpq_canonicalize(result);
  QQStorage::finish(*this, result);
}

QQ::QQ(long numerator, long denominator) {
  if (denominator == 0) fail("QQ: division by zero");
  const Int128 sign = denominator < 0 ? -1 : 1;
  QQStorage::setReduced(*this, sign * numerator, static_cast<std::uint64_t>(sign * denominator));
}

QQ QQ::canonicalise(bool sign, const ZZ& ganze, const ZZ& zaehler, const ZZ& nenner) {
  if (!ganze.sign() || !zaehler.sign() || !nenner.sign())
    fail("A ganze / zaehler / nenner sign has been set, though it should not be used");
  QQ result = zaehler.isZero() ? QQ(ganze) : QQ(ganze * nenner + zaehler, nenner);
  if (!sign) result.negate();
  return result;
}

const QQ& QQ::zero() {
  static const QQ value;
  return value;
}

const QQ& QQ::one() {
  static const QQ value(1);
  return value;
}

const QQ& QQ::minusOne() {
  static const QQ value(-1);
  return value;
}

const QQ& QQ::infinity() {
  static const QQ value = [] {
    QQ infinite;
    infinite.setInf(true);
    return infinite;
  }();
  return value;
}

const QQ& QQ::ten() {
  static const QQ value(10);
  return value;
}

ZZ QQ::ganze() const {
  if (isInf()) return ZZ::one();
  ZZ result;
  const QQView view(*this);
  mpz_tdiv_q(result.get(), view.numerator(), view.denominator());
  mpz_abs(result.get(), result.get());
  return result;
}

ZZ QQ::zaehler() const {
  ZZ result;
  if (isInf()) return result;
  const QQView view(*this);
  mpz_tdiv_r(result.get(), view.numerator(), view.denominator());
  mpz_abs(result.get(), result.get());
  return result;
}

ZZ QQ::nenner() const {
  if (isInf()) return ZZ::one();
  ZZ result;
  mpz_set(result.get(), QQView(*this).denominator());
  return result;
}

ZZ QQ::numerator() const {
  if (isInf()) return ZZ(static_cast<long>(word_));
  ZZ result;
  mpz_set(result.get(), QQView(*this).numerator());
  return result;
}

QQ QQ::denominator() const {
  if (isBig()) return QQ(nenner());
  return isInf() ? QQ(1) : QQ(static_cast<long>(tag_));
}

void QQ::makeBig(long value) {
  auto* const fresh = newRational();
  mpq_set_si(fresh, value, 1);
  word_ = std::bit_cast<std::int64_t>(fresh);
  tag_ = bigTag;
}

void QQ::copyBig(const QQ& other) {
  auto* const fresh = newRational();
  mpq_set(fresh, other.big());
  word_ = std::bit_cast<std::int64_t>(fresh);
}

void QQ::freeBig() noexcept {
  const std::unique_ptr<Rational> owner(big());
  mpq_clear(owner.get());
}

bool QQ::bigIsInteger() const noexcept {
  return mpz_cmp_ui(mpq_denref(big()), 1) == 0;
}

void QQ::assignGeneral(const QQ& other) {
  if (isBig() && other.isBig()) {
    mpq_set(big(), other.big());
  } else {
    QQ copy(other);
    swap(copy);
  }
}

}  // namespace starsift
