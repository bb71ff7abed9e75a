// Linked into each test program: a test that takes longer than NORVELIS_TEST_SECONDS is named on standard
// error and ends the program, so that ctest shows which test hangs.
#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

namespace {

void EndAfter(std::chrono::seconds limit, const std::stop_token& testEnded, const std::string& name) {
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any wake;
    wake.wait_for(lock, testEnded, limit, [] { return false; });
    if (testEnded.stop_requested()) return;
    std::fprintf(stderr, "%s is still running after %lld s; it hangs\n", name.c_str(),
                 static_cast<long long>(limit.count()));
    std::abort();
}

class Watchdog : public ::testing::EmptyTestEventListener {
  public:
    void OnTestStart(const ::testing::TestInfo& test) override {
        const std::string name = std::string(test.test_suite_name()) + "." + test.name();
        watcher_ = std::jthread([name](const std::stop_token& testEnded) {
            EndAfter(std::chrono::seconds(NORVELIS_TEST_SECONDS), testEnded, name);
        });
    }
    void OnTestEnd(const ::testing::TestInfo&) override { watcher_ = {}; }

  private:
    std::jthread watcher_;
};

const bool installed = [] {
    ::testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);  // GoogleTest owns it.
    return true;
}();

}  // namespace
