#pragma once

#include <cstddef>

namespace Command {

/// A line on standard error that fills up as images are done. Draws only when there are several images and standard
/// error is a terminal.
class ProgressBar
{
public:
    explicit ProgressBar(size_t total);
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void draw(size_t done);
    /// Takes the line away, so that another can be printed.
    void clear();

private:
    size_t m_total;
    bool m_visible;
};

} // namespace Command
