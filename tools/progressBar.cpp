#include "progressBar.h"

#include <cstdio>
#include <string>

#include <unistd.h>

namespace Command {

ProgressBar::ProgressBar(size_t total) : m_total(total), m_visible(total > 1 && isatty(STDERR_FILENO) == 1) {}

void ProgressBar::draw(size_t done)
{
    if (!m_visible) return;
    constexpr size_t width = 40;
    const size_t filled = width * done / m_total;
    const std::string bar = std::string(filled, '=') + std::string(width - filled, ' ');
    std::fprintf(stderr, "\r[%s] %zu of %zu images", bar.c_str(), done, m_total);
    std::fflush(stderr);
}

void ProgressBar::clear()
{
    if (m_visible) std::fputs("\r\033[K", stderr);
}

} // namespace Command
