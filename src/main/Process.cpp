#include "Process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <malloc.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nettlecap {

namespace {

constexpr std::array terminating{SIGTERM, SIGINT, SIGHUP};

int wakeUp = -1;  // an event counter; all that a signal handler may touch

void onSignal(int) {
    const int before = errno;
    const std::uint64_t one = 1;
    (void)!write(wakeUp, &one, sizeof one);
    errno = before;
}

void handleWith(void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int signal : terminating) sigaction(signal, &action, nullptr);
}

}  // namespace

void keepToTheUser() {
    umask(S_IRWXG | S_IRWXO);
#ifdef NDEBUG
    prctl(PR_SET_DUMPABLE, 0);
    const rlimit none{.rlim_cur = 0, .rlim_max = 0};
    setrlimit(RLIMIT_CORE, &none);
#endif
}

void returnMemoryEarly() {
    // Left alone, glibc raises this limit to the largest block it saw, and keeps the next
    // ones, tens of megabytes a picture, in the heaps of the threads that decoded them.
    mallopt(M_MMAP_THRESHOLD, 256 * 1024);
}

void releaseMemory() { malloc_trim(0); }

TerminationSignals::TerminationSignals(Task onTermination)
    : readable_(wakeUp = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), QSocketNotifier::Read) {
    QObject::connect(&readable_, &QSocketNotifier::activated, [onTermination = std::move(onTermination)] {
        std::uint64_t count = 0;
        if (read(wakeUp, &count, sizeof count) == sizeof count) onTermination();
    });
    handleWith(onSignal);
}

TerminationSignals::~TerminationSignals() {
    handleWith(SIG_DFL);
    close(std::exchange(wakeUp, -1));
}

}  // namespace nettlecap
