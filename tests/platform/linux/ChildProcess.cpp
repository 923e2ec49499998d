#include "platform/linux/ChildProcess.h"

#include <array>
#include <csignal>
#include <grp.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace nettlecap {

ChildProcess::ChildProcess(const std::function<void(const Say&)>& work) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("no process");
    pipe_ = ends[0];
    if (process_ == 0) {
        ::close(ends[0]);
        work([&](std::string_view text) {
            if (::write(ends[1], text.data(), text.size()) < 0) ::_exit(1);
        });
        ::_exit(0);
    }
    ::close(ends[1]);
}

ChildProcess::~ChildProcess() {
    kill();
    ::close(pipe_);
}

std::string ChildProcess::readUntil(char last) const {
    std::string said;
    char byte = 0;
    while (::read(pipe_, &byte, 1) == 1) {
        said += byte;
        if (byte == last) break;
    }
    return said;
}

std::string ChildProcess::readAll() const {
    std::string said;
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(pipe_, block.data(), block.size())) > 0;)
        said.append(block.data(), static_cast<std::size_t>(count));
    return said;
}

void ChildProcess::kill() {
    if (process_ < 0) return;
    ::kill(process_, SIGKILL);
    ::waitpid(std::exchange(process_, -1), nullptr, 0);
}

std::string inChild(const std::function<std::string()>& work) {
    return ChildProcess([&](const ChildProcess::Say& say) { say(work()); }).readAll();
}

std::string asOrdinaryUser(const std::function<std::string()>& work) {
    return inChild([&]() -> std::string {
        constexpr uid_t nobody = 65534;
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0))
            return "cannot become an ordinary user";
        return work();
    });
}

}  // namespace nettlecap
