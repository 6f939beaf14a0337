// Several threads that start together.
#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace quill::test {

// Runs work(0) to work(count - 1), each on a thread of its own, at once.
template <class Work>
void together(int count, const Work& work) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&work, &ready, count, i] {
            ++ready;
            while (ready < count) std::this_thread::yield();
            work(i);
        });
    }
    for (std::thread& thread : threads) thread.join();
}

}  // namespace quill::test
