#include "morvane/directoryListing.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/fileExtension.h"
#include "xml/fileIOManager.h"

#include <algorithm>
#include <utility>

namespace Morvane_2015_1_42::Impl {

namespace {

// The times of std::filesystem are as fine as those of the file system; boost's count whole seconds, and would miss a
// second change within one.
namespace fs = std::filesystem;

using Color::LogCategory::MORVANE_PATH;

bool isSamePath(const std::string& a, const std::string& b)
{
    const auto unified = [](char c) { return c == '\\' ? '/' : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return unified(x) == unified(y); });
}

bool isTransformFile(const std::string& name)
{
    const std::string extension = Color::getFileExtension(name);
    const auto& supported = Color::FileIOManager::getSupportedExtensions();
    return std::any_of(supported.begin(), supported.end(),
                       [&](const auto& entry) { return Color::equalsIgnoreCase(entry.extension, extension); });
}

void checkIsDirectory(const std::string& path)
{
    const fs::file_status status = fs::status(path);
    if (!fs::exists(status)) Color::raise(MORVANE_PATH, Color::ErrorIds::PATH_NOT_FOUND, path);
    if (!fs::is_directory(status)) Color::raise(MORVANE_PATH, Color::ErrorIds::PATH_NOT_A_DIRECTORY, path);
}

DirectoryListing::ContentPtr readContent(const std::string& path, fs::file_time_type time)
{
    const auto content = std::make_shared<DirectoryListing::Content>();
    content->time = time;

    std::error_code error;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code ignored; // what cannot be looked at, such as a link to itself, is neither
        std::string name = entry->path().filename().string();
        if (entry->is_directory(ignored)) {
            content->directories.push_back(std::move(name));
        } else if (entry->is_regular_file(ignored) && isTransformFile(name)) {
            content->files.push_back(std::move(name));
        }
    }
    if (error) Color::raise(MORVANE_PATH, Color::ErrorIds::PATH_READ_ERROR, path);

    // Characters of a std::string compare as unsigned bytes.
    std::sort(content->directories.begin(), content->directories.end());
    std::sort(content->files.begin(), content->files.end());
    return content;
}

} // namespace

void DirectoryListing::setPath(const std::string& path)
{
    if (isSamePath(m_path, path)) return;
    m_path = path;
    m_content.reset();
}

DirectoryListing::ContentPtr DirectoryListing::getContent()
{
    ContentPtr known = std::exchange(m_content, nullptr);
    try {
        checkIsDirectory(m_path);
        // Taken first: a change while the directory is read makes another time.
        const fs::file_time_type time = fs::last_write_time(m_path);
        m_content = known && known->time == time ? std::move(known) : readContent(m_path, time);
    } catch (const fs::filesystem_error& error) {
        Color::raise(MORVANE_PATH, Color::ErrorIds::FILE_SYSTEM_ERROR, m_path, error.what());
    }
    return m_content;
}

} // namespace Morvane_2015_1_42::Impl
