#pragma once
// Threads kept for running the calls of a loop at once, each with a state of
// its own that it makes and destroys on its own thread (a text laid out on a
// thread belongs to that thread's fonts).

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tavilo {

// The state of workers that need none.
struct NoWorkerState {};

// `State` is default-constructible; each worker makes its own.
template <class State>
class WorkerPool {
 public:
  using Task = std::function<void(int index, State& state)>;
  using Done = std::function<void(int index)>;

  WorkerPool() = default;
  ~WorkerPool() = default;  // the workers end, each destroying its state
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  // Calls task(i, state) once for every i below `count`, each thread taking
  // the next i not taken yet: the calling thread with `own`, and at most
  // min(threads, count) - 1 workers with theirs (made when first needed and
  // kept for later calls). With `done`, calls done(i) on the calling thread
  // for every i in order, as soon as task i has returned; while the next
  // task is not done the calling thread runs tasks itself. After an
  // exception from a task or from `done` no task starts and no done(i) is
  // called; it is thrown here once the tasks under way have returned.
  void ForEach(int count, int threads, State& own, const Task& task, const Done& done = nullptr) {
    const int helpers = std::min(threads, count) - 1;
    if (helpers <= 0) {
      for (int i = 0; i < count; ++i) {
        task(i, own);
        if (done) done(i);
      }
      return;
    }
    while (int(workers_.size()) < helpers) workers_.push_back(std::make_unique<Worker>());
    Run run(task, count);
    {
      // The workers end their run before it goes, also when `done` raises.
      struct StopAtEnd {
        Run& run;
        std::vector<std::unique_ptr<Worker>>& workers;
        int helpers;
        ~StopAtEnd() {
          run.stop = true;
          for (int h = 0; h < helpers; ++h) workers[h]->Wait();
        }
      } stopAtEnd{run, workers_, helpers};
      for (int h = 0; h < helpers; ++h)
        workers_[h]->Start([&run](State& state) {
          while (run.RunNext(state)) {
          }
        });
      if (!done) {
        while (run.RunNext(own)) {
        }
      } else {
        for (int i = 0; i < count && run.RunUntilDone(i, own); ++i) done(i);
      }
    }
    if (run.failure) std::rethrow_exception(run.failure);
  }

 private:
  // One call of ForEach, shared by the threads that run it.
  struct Run {
    Run(const Task& task, int count) : task(task), count(count), finished(size_t(count)) {}

    // Runs the next task not taken; false when none is left or the run stops.
    bool RunNext(State& state) {
      if (stop) return false;
      const int i = next++;
      if (i >= count) return false;
      try {
        task(i, state);
      } catch (...) {
        std::lock_guard lock(mutex);
        if (!failure) failure = std::current_exception();
        stop = true;
      }
      {
        std::lock_guard lock(mutex);
        finished[i] = true;
      }
      changed.notify_all();
      return true;
    }

    // Runs tasks until task `i` has returned; false when the run stopped.
    bool RunUntilDone(int i, State& state) {
      for (;;) {
        {
          std::unique_lock lock(mutex);
          if (stop) return false;
          if (finished[i]) return true;
          if (next >= count) {
            changed.wait(lock, [&] { return stop || finished[i]; });
            return !stop;
          }
        }
        RunNext(state);
      }
    }

    const Task& task;
    const int count;
    std::atomic<int> next{0};
    std::atomic<bool> stop{false};
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<bool> finished;  // guarded by `mutex`
    std::exception_ptr failure;  // the first, guarded by `mutex`
  };

  // A thread that runs one job at a time with its own state.
  class Worker {
   public:
    Worker() : thread_([this] { Serve(); }) {}
    ~Worker() {
      {
        std::lock_guard lock(mutex_);
        quit_ = true;
      }
      wake_.notify_one();
      thread_.join();
    }

    void Start(std::function<void(State&)> job) {
      {
        std::lock_guard lock(mutex_);
        job_ = std::move(job);
      }
      wake_.notify_one();
    }

    // Returns once the job has; at once when there is none.
    void Wait() {
      std::unique_lock lock(mutex_);
      idle_.wait(lock, [this] { return !job_; });
    }

   private:
    void Serve() {
      std::optional<State> state;
      state.emplace();
      std::unique_lock lock(mutex_);
      for (;;) {
        wake_.wait(lock, [this] { return quit_ || job_; });
        if (quit_) break;
        lock.unlock();
        job_(*state);  // a Run's job raises nothing
        lock.lock();
        job_ = nullptr;
        idle_.notify_one();
      }
      lock.unlock();
      state.reset();
    }

    std::mutex mutex_;
    std::condition_variable wake_, idle_;
    std::function<void(State&)> job_;  // empty when there is none
    bool quit_ = false;
    std::thread thread_;  // last: it starts at once and uses the rest
  };

  std::vector<std::unique_ptr<Worker>> workers_;
};

}  // namespace tavilo
