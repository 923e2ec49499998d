#pragma once

#include <chrono>
#include <compare>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace nettlecap {

using Path = std::filesystem::path;
using Seconds = std::chrono::duration<double>;  ///< delays
using Uptime = Seconds;                         ///< time since boot
using Task = std::function<void()>;

/// Wall-clock time as the files write it: seconds since 2001-01-01T00:00:00Z.
struct Date {
    double secondsSince2001 = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 means the 0 of a rewritten comparison
    auto operator<=>(const Date&) const = default;
};

struct Uuid {
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    std::string text() const;                                 ///< upper-case canonical, 36 characters
    static std::optional<Uuid> parse(std::string_view text);  ///< canonical form only, in either case

    auto operator<=>(const Uuid&) const = default;
};

/// Immutable and shared: cheap to copy and safe to hand to another thread.
class Bytes {
public:
    Bytes() = default;
    explicit Bytes(std::string data) : data_(std::make_shared<const std::string>(std::move(data))) {}

    std::string_view view() const { return data_ ? std::string_view(*data_) : std::string_view(); }
    bool empty() const { return view().empty(); }
    std::size_t size() const { return view().size(); }

    friend bool operator==(const Bytes& a, const Bytes& b) {
        return a.data_ == b.data_ || a.view() == b.view();
    }

private:
    std::shared_ptr<const std::string> data_;
};

/// The system's own words for what went wrong, made where the system was called.
struct Failure {
    std::string description;
};

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::move(value)) {}
    Result(Failure failure) : state_(std::move(failure)) {}

    explicit operator bool() const { return state_.index() == 0; }
    const T& operator*() const { return std::get<0>(state_); }
    T& operator*() { return std::get<0>(state_); }
    const T* operator->() const { return &std::get<0>(state_); }
    const std::string& description() const { return std::get<1>(state_).description; }

private:
    std::variant<T, Failure> state_;
};

/// The value of a Result that carries none.
using Done = std::monostate;

}  // namespace nettlecap
