#include "app/OutOfMemory.h"

#include <gmp.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "system/Failure.h"
#include "system/Semaphore.h"
#include "system/UnfinishedFile.h"

namespace starsift {

namespace {

/// Bytes that the report and the functions run at the exit may need.
constexpr std::size_t setAsideSize = std::size_t{16} << 10U;

void* setAside = nullptr;

OutOfMemoryEnd endWithout = reportOutOfMemory;

void* allocate(std::size_t size) {
  void* const memory = std::malloc(size);
  if (memory == nullptr) failOutOfMemory();
  return memory;
}

void* reallocate(void* old, std::size_t /*oldSize*/, std::size_t size) {
  void* const memory = std::realloc(old, size);
  if (memory == nullptr) failOutOfMemory();
  return memory;
}

void release(void* memory, std::size_t /*size*/) {
  std::free(memory);
}

}  // namespace

void failOutOfMemory() {
  static std::atomic_flag isEnding;
  thread_local bool endsHere = false;
  // Not even what was set aside is enough for the report.
  if (endsHere) std::_Exit(EXIT_FAILURE);
  // One thread ends the process.
  while (isEnding.test_and_set()) pause();
  endsHere = true;
  unlinkAllSemaphores();
  removeUnfinishedFiles();
  std::free(std::exchange(setAside, nullptr));
  endWithout();
  std::_Exit(EXIT_FAILURE);
}

void reportOutOfMemory() {
  // GMP can't be left by an exception.
  endProcess("Out of memory");
}

void failWithoutMemory(OutOfMemoryEnd end) {
  endWithout = end;
  std::set_new_handler(failOutOfMemory);
  mp_set_memory_functions(allocate, reallocate, release);
  setAside = allocate(setAsideSize);
  // Memory that was never used may still be missing.
  std::memset(setAside, 0, setAsideSize);
}

}  // namespace starsift
