#pragma once

#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

/// A process that runs a body, which may expect things as the test does. Killed at the end unless it was waited for.
class ChildProcess
{
public:
    template <class Body>
    explicit ChildProcess(const Body& body)
    {
        std::fflush(nullptr);
        m_process = ::fork();
        EXPECT_NE(m_process, -1);
        if (m_process != 0) return;
        try {
            body();
        } catch (...) {
            ADD_FAILURE() << "An exception ended the process";
        }
        std::fflush(nullptr);
        ::_exit(testing::Test::HasFailure() ? 1 : 0);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess()
    {
        if (m_process > 0) kill();
    }

    /// True when the body came to its end and all that it expected was so.
    bool succeeds() { return wait() == 0; }
    /// True when a SIGKILL ended it.
    bool isKilled()
    {
        const int status = wait();
        return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    }
    void kill()
    {
        ::kill(m_process, SIGKILL);
        wait();
    }
    void signal(int number) const { ::kill(m_process, number); }

private:
    int wait()
    {
        int status = 0;
        EXPECT_EQ(::waitpid(m_process, &status, 0), m_process);
        m_process = -1;
        return status;
    }

    pid_t m_process;
};

/// Lets one process wait for another that was forked after it was made.
class ProcessSignal
{
public:
    ProcessSignal() { EXPECT_EQ(::pipe(m_ends), 0); }
    ProcessSignal(const ProcessSignal&) = delete;
    ProcessSignal& operator=(const ProcessSignal&) = delete;
    ~ProcessSignal()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }

    void send() const { EXPECT_EQ(::write(m_ends[1], "!", 1), 1); }
    void await() const
    {
        char byte = 0;
        EXPECT_EQ(::read(m_ends[0], &byte, 1), 1);
    }

private:
    int m_ends[2] = {};
};
