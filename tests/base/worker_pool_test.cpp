#include "base/worker_pool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tavilo {
namespace {

struct ThreadState {
  std::thread::id madeOn = std::this_thread::get_id();
};

// Workers are kept between calls; results are told on the calling thread in order.
TEST(WorkerPool, TasksUseTheirThreadsStateAndResultsAreToldInOrder) {
  WorkerPool<ThreadState> pool;
  ThreadState own;
  std::mutex mutex;
  std::set<std::thread::id> threadsSeen;
  for (int threads : {1, 3, 1, 3}) {
    std::vector<int> results(200);
    int told = 0;
    auto task = [&](int i, ThreadState& state) {
      EXPECT_EQ(state.madeOn, std::this_thread::get_id()) << i;
      std::lock_guard lock(mutex);
      threadsSeen.insert(state.madeOn);
      results[i] = i * i;
    };
    pool.ForEach(200, threads, own, task, [&](int i) {
      EXPECT_EQ(std::this_thread::get_id(), own.madeOn);
      EXPECT_EQ(results[i], i * i) << "told before it was done";
      EXPECT_EQ(i, told++) << "out of order, threads " << threads;
    });
    EXPECT_EQ(told, 200);
  }
  EXPECT_LE(threadsSeen.size(), 3u) << "workers made afresh for a later call";
}

// Nothing is told after the exception, and the pool serves the next call.
TEST(WorkerPool, AnExceptionReachesTheCallerAndEndsTheTelling) {
  WorkerPool<NoWorkerState> pool;
  NoWorkerState own;
  for (bool inTask : {true, false})
    for (int threads : {1, 3}) {
      int lastTold = -1;
      auto failAt50 = [](int i, bool here) { return here && i == 50 ? throw std::runtime_error("file 50") : i; };
      EXPECT_THROW(pool.ForEach(
                       100, threads, own, [&](int i, NoWorkerState&) { failAt50(i, inTask); },
                       [&](int i) { lastTold = failAt50(i, !inTask); }),
                   std::runtime_error);
      EXPECT_LE(lastTold, 49) << "in task " << inTask << ", threads " << threads;
      std::atomic<int> calls{0};
      pool.ForEach(
          10, threads, own, [&](int, NoWorkerState&) { ++calls; }, [](int) {});
      EXPECT_EQ(calls, 10);
    }
}

}  // namespace
}  // namespace tavilo
