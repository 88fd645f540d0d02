#pragma once

namespace Command {

/// While one exists, what image libraries print on standard error is dropped: libpng and others print their failures
/// themselves, and every failure has its one line from us. Nothing of ours may print meanwhile.
class QuietLibraries
{
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

private:
    int m_standardError; ///< a second descriptor of it; -1: it could not be set aside
};

} // namespace Command
