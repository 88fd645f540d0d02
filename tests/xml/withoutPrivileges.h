#pragma once

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

/// While it lives, permissions of files and directories hold for this thread even when it belongs to the superuser.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
    {
        EXPECT_EQ(::syscall(SYS_capget, &m_header, m_former), 0);
        __user_cap_data_struct reduced[] = {m_former[0], m_former[1]};
        reduced[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        EXPECT_EQ(::syscall(SYS_capset, &m_header, reduced), 0);
    }
    WithoutPrivileges(const WithoutPrivileges&) = delete;
    WithoutPrivileges& operator=(const WithoutPrivileges&) = delete;
    ~WithoutPrivileges() { ::syscall(SYS_capset, &m_header, m_former); }

private:
    __user_cap_header_struct m_header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_former[2] = {};
};
