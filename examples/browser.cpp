// Prints the transform files of a directory and of all that is below it, as a browser would show them. Links that lead
// back up would have no end, so it goes eight directories deep.
#include <morvane/morvane.h>

#include <cstdio>
#include <string>

namespace {

const int deepest = 8;

bool printBelow(Morvane::TransformPathMonitor& monitor, const std::string& directory, int depth);

class FilePrinter : public Morvane::TransformPathMonitor::Callback
{
public:
    explicit FilePrinter(int depth) : m_depth(depth) {}

    void onEntry(const char* name) override { std::printf("%*s%s\n", 2 * m_depth, "", name); }

private:
    int m_depth;
};

// Takes what is in each directory as it comes: a callback may call its monitor.
class DirectoryPrinter : public Morvane::TransformPathMonitor::Callback
{
public:
    DirectoryPrinter(Morvane::TransformPathMonitor& monitor, const std::string& above, int depth)
        : m_monitor(monitor), m_above(above), m_depth(depth)
    {}

    void onEntry(const char* name) override
    {
        std::printf("%*s%s/\n", 2 * m_depth, "", name);
        if (m_depth < deepest) printBelow(m_monitor, m_above + name + "/", m_depth + 1);
    }

private:
    Morvane::TransformPathMonitor& m_monitor;
    std::string m_above;
    int m_depth;
};

bool printBelow(Morvane::TransformPathMonitor& monitor, const std::string& directory, int depth)
{
    DirectoryPrinter directories(monitor, directory, depth);
    FilePrinter files(depth);
    Morvane::MorvaneStatus status = monitor.listDirectories(directory.c_str(), directories);
    if (status) status = monitor.listFiles(directory.c_str(), files);
    if (!status) std::fprintf(stderr, "browser: %s\n", status.getErrorMessage());
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    Morvane::TransformPathMonitor monitor(argc > 1 ? argv[1] : Morvane::getSystemColorTransformPath());
    return printBelow(monitor, "", 0) ? 0 : 1;
}
