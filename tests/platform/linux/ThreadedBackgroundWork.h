#pragma once

#include "platform/Time.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace nettlecap {

/// Two threads of the standard library, all of whose doings the thread sanitizer sees; of
/// Qt's, which is built without it, it would take each hand-over for a race.
class ThreadedBackgroundWork final : public BackgroundWork {
public:
    ThreadedBackgroundWork() {
        for (int thread = 0; thread < 2; ++thread) threads_.emplace_back([this] { work(); });
    }
    ~ThreadedBackgroundWork() override {
        {
            const std::lock_guard lock(mutex_);
            isOver_ = true;
        }
        changed_.notify_all();
        for (std::thread& thread : threads_) thread.join();
    }

    void run(std::function<Task()> job) override {
        {
            const std::lock_guard lock(mutex_);
            jobs_.push_back(std::move(job));
        }
        changed_.notify_one();
    }

    /// On the main thread.
    void runTasks() {
        std::vector<Task> tasks;
        {
            const std::lock_guard lock(mutex_);
            tasks.swap(tasks_);
        }
        for (const Task& task : tasks) task();
    }

private:
    void work() {
        std::unique_lock lock(mutex_);
        while (true) {
            changed_.wait(lock, [this] { return isOver_ || !jobs_.empty(); });
            if (isOver_) return;
            auto job = std::move(jobs_.front());
            jobs_.pop_front();
            lock.unlock();
            Task task = job();
            job = nullptr;
            lock.lock();
            if (task) tasks_.push_back(std::move(task));
        }
    }

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<Task()>> jobs_;
    std::vector<Task> tasks_;
    bool isOver_ = false;
    std::vector<std::thread> threads_;
};

}  // namespace nettlecap
