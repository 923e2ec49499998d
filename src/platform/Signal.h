#pragma once

#include "platform/Values.h"

#include <vector>

namespace nettlecap {

/// Ends its listening when destroyed. May outlive what it listens to.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(Task end) : end_(std::move(end)) {}
    Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            end_ = std::exchange(other.end_, nullptr);
        }
        return *this;
    }
    ~Subscription() { reset(); }

    void reset() {
        if (auto end = std::exchange(end_, nullptr)) end();
    }
    explicit operator bool() const { return static_cast<bool>(end_); }

private:
    Task end_;
};

/// Calls whoever listened when the call began and still listens when its turn comes.
/// A listener may subscribe, end subscriptions, and destroy the signal.
template <class... Values>
class Signal {
    using Listener = std::function<void(const Values&...)>;
    using Listeners = std::vector<std::shared_ptr<Listener>>;

public:
    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription subscribe(Listener listener) const {
        auto entry = std::make_shared<Listener>(std::move(listener));
        listeners_->push_back(entry);
        return Subscription([all = std::weak_ptr(listeners_), weak = std::weak_ptr(entry)] {
            if (auto list = all.lock()) std::erase(*list, weak.lock());
        });
    }

    void emit(const Values&... values) const {
        const std::vector<std::weak_ptr<Listener>> now(listeners_->begin(), listeners_->end());
        for (const auto& weak : now)
            if (auto listener = weak.lock()) (*listener)(values...);  // alive during its own call
    }

private:
    std::shared_ptr<Listeners> listeners_ = std::make_shared<Listeners>();
};

/// A value that tells of every assignment, after it. Listeners take no argument and
/// read the value, so that nested changes never show an old one.
template <class T>
class Published {
public:
    explicit Published(T value = {}) : value_(std::move(value)) {}

    const T& operator*() const { return value_; }
    const T* operator->() const { return &value_; }

    void operator=(T value) {
        value_ = std::move(value);
        changed_.emit();
    }

    /// Changes the value where it stands, then tells.
    template <class Edit>
    void edit(Edit change) {
        change(value_);
        changed_.emit();
    }

    Subscription subscribe(Task listener) const { return changed_.subscribe(std::move(listener)); }

private:
    T value_;
    Signal<> changed_;
};

/// Makes closures that do nothing once their owner is gone. Declare it last.
class LifetimeGuard {
public:
    LifetimeGuard() = default;
    LifetimeGuard(const LifetimeGuard&) = delete;
    LifetimeGuard& operator=(const LifetimeGuard&) = delete;

    template <class Call>
    auto operator()(Call call) const {
        return [alive = std::weak_ptr(alive_), call = std::move(call)](auto&&... values) mutable {
            if (!alive.expired()) call(std::forward<decltype(values)>(values)...);
        };
    }

private:
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace nettlecap
