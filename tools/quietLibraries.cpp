#include "quietLibraries.h"

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace Command {

QuietLibraries::QuietLibraries() : m_standardError(-1)
{
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    std::fflush(stderr);
    m_standardError = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (m_standardError >= 0) dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

QuietLibraries::~QuietLibraries()
{
    if (m_standardError < 0) return;
    std::fflush(stderr);
    dup2(m_standardError, STDERR_FILENO);
    close(m_standardError);
}

} // namespace Command
