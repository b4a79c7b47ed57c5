// A library to preload: counts the calls by which a program meets the system and
// makes one of them fail, come out short, or meet a signal.
//
//   FAULT=name:number:action   `name` is a call below, several joined by "+", or "any" for each
//                              of them but "new"; `number` counts from 1, 0 is every time
//     error=E    the call isn't made and fails with errno E; "new" throws
//     short      a read or write of half the bytes, one at least
//     before=S   signal S right before the call
//     after=S    signal S right behind it
//     delay=T    the call is made after T milliseconds
//   FAULT_LOG=path             appends the name of each call, one per line
//
// Calls inside the C library (the ones sem_open() makes, say) don't come by here.
#include <dlfcn.h>
#include <fcntl.h>
#include <semaphore.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>
#include <string_view>

namespace {

struct Fault {
  std::string_view name;
  long number = -1;
  std::string_view action;
  int argument = 0;
};

/// Cuts what stands before the separator off the head of `text`.
std::string_view takeField(std::string_view& text, char separator) {
  const std::size_t end = std::min(text.find(separator), text.size());
  const std::string_view field = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return field;
}

/// Allocates nothing: operator new comes by here too.
Fault readFault() {
  const char* const setting = std::getenv("FAULT");
  if (setting == nullptr) return {};
  std::string_view text = setting;
  Fault result;
  result.name = takeField(text, ':');
  result.number = std::strtol(takeField(text, ':').data(), nullptr, 10);
  result.action = takeField(text, '=');
  if (!text.empty()) result.argument = std::atoi(text.data());
  return result;
}

const Fault& fault() {
  static const Fault result = readFault();
  return result;
}

// Past the functions of the C library, which are replaced below.
void logCall(std::string_view name) {
  static const char* const path = std::getenv("FAULT_LOG");
  if (path == nullptr) return;
  const long file = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_APPEND | O_CREAT, 0666);
  syscall(SYS_write, file, name.data(), name.size());
  syscall(SYS_write, file, "\n", 1);
  syscall(SYS_close, file);
}

/// True if `name` is one of the names joined by "+".
bool isAmong(std::string_view name, std::string_view names) {
  while (!names.empty())
    if (takeField(names, '+') == name) return true;
  return false;
}

void pauseFor(long milliseconds) {
  timespec rest{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
  while (nanosleep(&rest, &rest) != 0) {
  }
}

/// True when the fault hits this call; counts the calls it is about.
bool isHit(std::string_view name) {
  static long count = 0;
  const bool counted = fault().name == "any" ? name != "new" : isAmong(name, fault().name);
  return counted && (++count == fault().number || fault().number == 0);
}

/// The first bytes that a hit call still moves, or all of them.
std::size_t cut(bool hit, std::size_t size) {
  return hit && fault().action == "short"
             ? std::max<std::size_t>(size / 2, std::min<std::size_t>(size, 1))
             : size;
}

/// Makes the call unless it has to fail. `failed` is what it gives then.
template <class Result, class Call>
Result perform(bool hit, Result failed, const Call& call) {
  if (hit && fault().action == "error") {
    errno = fault().argument;
    return failed;
  }
  if (hit && fault().action == "before") raise(fault().argument);
  if (hit && fault().action == "delay") pauseFor(fault().argument);
  const Result result = call();
  const int error = errno;
  if (hit && fault().action == "after") raise(fault().argument);
  errno = error;
  return result;
}

template <class Function>
Function* original(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// The assembler name keeps the declarations of the headers, with their attributes
// and noexcept, out of the way.
#define INTERPOSE(result, name, parameters)                  \
  extern "C" result faulty_##name parameters __asm__(#name); \
  extern "C" result faulty_##name parameters

// `parameters` and `arguments` stand in parentheses.
#define FAULTY(result, name, parameters, arguments, failed)                       \
  INTERPOSE(result, name, parameters) {                                           \
    static auto* const next = original<result parameters>(#name);                 \
    logCall(#name);                                                               \
    return perform<result>(isHit(#name), failed, [&] { return next arguments; }); \
  }

// posix_fallocate() gives its error instead of storing it.
#define FAULTY_BY_RESULT(name, parameters, arguments) \
  FAULTY(int, name, parameters, arguments, fault().argument)

// read() and write(), which may move fewer bytes than they were asked for.
#define FAULTY_MOVE(name, pointer)                                                       \
  INTERPOSE(ssize_t, name, (int file, pointer bytes, std::size_t size)) {                \
    static auto* const next = original<ssize_t(int, pointer, std::size_t)>(#name);       \
    logCall(#name);                                                                      \
    const bool hit = isHit(#name);                                                       \
    return perform<ssize_t>(hit, -1, [&] { return next(file, bytes, cut(hit, size)); }); \
  }

// The name in the log and in FAULT: "create" for a new file, "look" for a step on the way to a
// file, "openat" for a file.
int faultyOpenat(int folder, const char* path, int flags, mode_t mode) {
  static auto* const next = original<int(int, const char*, int, mode_t)>("openat");
  const char* const name = (flags & O_CREAT) != 0  ? "create"
                           : (flags & O_PATH) != 0 ? "look"
                                                   : "openat";
  logCall(name);
  return perform<int>(isHit(name), -1, [&] { return next(folder, path, flags, mode); });
}

INTERPOSE(int, openat, (int folder, const char* path, int flags, mode_t mode)) {
  return faultyOpenat(folder, path, flags, mode);
}

// What the headers make of a call without mode.
INTERPOSE(int, __openat_2, (int folder, const char* path, int flags)) {
  return faultyOpenat(folder, path, flags, 0);
}

FAULTY(int, close, (int file), (file), -1)
FAULTY(int, faccessat, (int folder, const char* path, int mode, int flags),
       (folder, path, mode, flags), -1)
FAULTY(int, fchmod, (int file, mode_t mode), (file, mode), -1)
FAULTY(int, fchown, (int file, uid_t user, gid_t group), (file, user, group), -1)
FAULTY(ssize_t, fgetxattr, (int file, const char* name, void* value, size_t size),
       (file, name, value, size), -1)
FAULTY(int, fremovexattr, (int file, const char* name), (file, name), -1)
FAULTY(int, fsetxattr, (int file, const char* name, const void* value, size_t size, int flags),
       (file, name, value, size, flags), -1)
FAULTY(int, fstat, (int file, struct stat* status), (file, status), -1)
FAULTY(int, fstatat, (int folder, const char* path, struct stat* status, int flags),
       (folder, path, status, flags), -1)
FAULTY(int, fsync, (int file), (file), -1)
FAULTY(int, flock, (int file, int operation), (file, operation), -1)
FAULTY(int, ftruncate, (int file, off_t size), (file, size), -1)
FAULTY(int, linkat, (int from, const char* name, int to, const char* other, int flags),
       (from, name, to, other, flags), -1)
FAULTY(off_t, lseek, (int file, off_t place, int from), (file, place, from), -1)
FAULTY(int, open, (const char* path, int flags, mode_t mode), (path, flags, mode), -1)
FAULTY_BY_RESULT(posix_fallocate, (int file, off_t from, off_t size), (file, from, size))
FAULTY(int, pthread_sigmask, (int how, const sigset_t* set, sigset_t* old), (how, set, old), -1)
FAULTY_MOVE(read, void*)
FAULTY(ssize_t, readlinkat, (int folder, const char* path, char* text, std::size_t size),
       (folder, path, text, size), -1)
FAULTY(int, renameat, (int from, const char* name, int to, const char* other),
       (from, name, to, other), -1)
FAULTY(int, sem_close, (sem_t * semaphore), (semaphore), -1)
FAULTY(sem_t*, sem_open, (const char* name, int flags, mode_t mode, unsigned value),
       (name, flags, mode, value), SEM_FAILED)
FAULTY(int, sem_unlink, (const char* name), (name), -1)
FAULTY(int, sem_wait, (sem_t * semaphore), (semaphore), -1)
FAULTY(int, sigaction, (int number, const struct sigaction* action, struct sigaction* old),
       (number, action, old), -1)
FAULTY(int, stat, (const char* path, struct stat* status), (path, status), -1)
FAULTY(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags), -1)
FAULTY_MOVE(write, const void*)

void* operator new(std::size_t size) {
  logCall("new");
  const bool hit = isHit("new");
  void* const memory = perform<void*>(hit, nullptr, [size] { return std::malloc(size); });
  if (memory != nullptr) return memory;
  // As the function of the library does.
  if (const std::new_handler handler = std::get_new_handler()) handler();
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
