#pragma once

#include "platform/Values.h"

#include <QSocketNotifier>

namespace nettlecap {

/// What the user copied is nobody else's to read: files that the process makes are the
/// user's alone, and a release build leaves no core dump.
void keepToTheUser();

/// Keeps what a decoded picture needed for a moment from staying with the process.
void returnMemoryEarly();
/// Gives what is free back to the system.
void releaseMemory();

/// Turns SIGTERM, SIGINT and SIGHUP into a call from the main loop. One at a time.
class TerminationSignals {
public:
    explicit TerminationSignals(Task onTermination);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    QSocketNotifier readable_;
};

}  // namespace nettlecap
