#include "files/ComposedText.h"

#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include "system/EndGuard.h"
#include "system/HelperThreads.h"

namespace starsift {

namespace {

/// Pieces on their way from the thread that composes them to the one that writes them, in a ring.
class PieceRing {
 public:
  /// The first piece is composed. All memory is that of the calling thread.
  explicit PieceRing(std::string first) {
    for (std::string& piece : pieces_) piece.reserve(first.capacity());
    pieces_.front() = std::move(first);
  }

  /// The place of the next piece to compose, once there is room; null after end().
  std::string* room() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isEnded_ || composed_ - written_ < pieces_.size(); });
    return isEnded_ ? nullptr : &pieces_[composed_ % pieces_.size()];
  }

  void composedOne() {
    change([this] { ++composed_; });
  }

  /// The next piece to write, once it is composed; null if there is none before end().
  const std::string* next() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isEnded_ || written_ < composed_; });
    return written_ < composed_ ? &pieces_[written_ % pieces_.size()] : nullptr;
  }

  void wroteOne() {
    change([this] { ++written_; });
  }

  /// No further piece is composed, or written.
  void end() {
    change([this] { isEnded_ = true; });
  }

 private:
  template <class Change>
  void change(const Change& apply) {
    {
      const std::lock_guard lock(mutex_);
      apply();
    }
    changed_.notify_one();
  }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::array<std::string, piecesAhead> pieces_;
  std::size_t composed_ = 1;
  std::size_t written_ = 0;
  bool isEnded_ = false;
};

/// False if there is no further piece to compose.
bool composeOne(PieceRing& ring, const ComposePiece& compose) {
  std::string* const piece = ring.room();
  if (piece == nullptr) return false;
  piece->clear();
  const bool isLast = !compose(*piece);
  ring.composedOne();
  if (isLast) ring.end();
  return !isLast;
}

}  // namespace

void writeComposed(const ComposePiece& compose,
                   const std::function<void(std::string_view)>& write) {
  std::string first;
  // Without a look at the cores for a short text: the C library reads a file for it.
  if (!compose(first)) return write(first);
  PieceRing ring(std::move(first));
  // Outlives the thread that sets it.
  std::exception_ptr problem;
  const auto composeRest = [&](unsigned) {
    try {
      while (composeOne(ring, compose)) continue;
    } catch (...) {
      problem = std::current_exception();
      ring.end();
    }
  };
  HelperThreads helper;
  const EndGuard ending(ring);
  if (std::thread::hardware_concurrency() > 1) helper.start(1, composeRest);
  while (const std::string* piece = ring.next()) {
    write(*piece);
    ring.wroteOne();
    if (helper.count() == 0) composeOne(ring, compose);
  }
  helper.join();
  if (problem) std::rethrow_exception(problem);
}

}  // namespace starsift
