#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// A copy of this process that does one thing and says what came of it.
class ChildProcess {
public:
    using Say = std::function<void(std::string_view)>;

    explicit ChildProcess(const std::function<void(const Say&)>& work);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();  ///< kills it

    std::string readUntil(char last) const;  ///< waits; what was said, or less if it ended before
    std::string readAll() const;             ///< waits for its end
    void kill();                             ///< at once, and waits until it is gone

private:
    int process_ = -1;
    int pipe_ = -1;
};

/// What `work` answers in a process of its own.
std::string inChild(const std::function<std::string()>& work);

/// The same, as a user whom the permissions of files bind (root passes them all).
std::string asOrdinaryUser(const std::function<std::string()>& work);

}  // namespace nettlecap
