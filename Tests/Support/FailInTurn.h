// A call in which one allocation, or one call on files, fails after the other:
//
//     FailInTurn(allocationsLeft, "done", {"std: std::bad_alloc"}, [] { return Work(); });
#pragma once

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <set>
#include <thread>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Support/FailingFiles.h"
#include "Support/FailingHeap.h"
#include "Support/FailureCheck.h"

namespace brindle_test {

using Answers = std::set<std::string>;

// Nothing fails, and nothing counts, as long as it lives.
class Calm {
public:
    ~Calm() { allocationsLeft = m_allocations, fileCallsLeft = m_fileCalls; }

private:
    long m_allocations = allocationsLeft.exchange(-1), m_fileCalls = fileCallsLeft.exchange(-1);
};

// The call must answer `undisturbed`, also behind one in which something failed; that one answers or ends in one of
// `others`, or comes through, and each of these must occur. First it is made in copies of the process, so that what is
// made once in a process fails, too; then in this one, where it may leave no memory and no open file behind.
template <class Call>
void FailInTurn(std::atomic<long>& left, const std::string& undisturbed, Answers others, const Call& call) {
    constexpr long kMost = 2000;
    const auto openFiles = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    bool isEnd = false;
    const auto answerOf = [&](long count) {
        std::string answer, failure;
        const auto run = [&] {
            left = count;
            failure = FailureOf([&] { answer = call(); });
            isEnd = left.exchange(-1) >= 0;
        };
        // On another thread, which a lock that this one still holds would hold up.
        count == kMost ? std::thread(run).join() : run();
        return failure == "nothing thrown" ? answer : failure;
    };
    others.insert(undisturbed);
    int status = 0;
    for (long count = 0; status == 0 && count < kMost; ++count) {
        if (fork() == 0) {
            alarm(60);
            const std::string answer = answerOf(count);
            const bool isLast = isEnd;
            EXPECT_TRUE(others.contains(answer) && answerOf(kMost) == undisturbed) << count << ": " << answer;
            std::_Exit(testing::Test::HasFailure() ? 2 : isLast);
        }
        wait(&status);
    }
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    Answers answers;
    // The pools and buffers of the first round are those of the second one.
    for (const bool isSecond : {false, true}) {
        const auto files = openFiles();
        isEnd = false;
        for (long count = 0, isLast = false; !isLast && count < kMost; ++count) {
            const long blocks = blocksInUse;
            answers.insert(answerOf(count)), isLast = isEnd;
            EXPECT_EQ(answerOf(kMost), undisturbed) << count;
            EXPECT_TRUE(!isSecond || (blocksInUse == blocks && openFiles() == files)) << count;
        }
    }
    EXPECT_EQ(answers, others);
}

} // namespace brindle_test
