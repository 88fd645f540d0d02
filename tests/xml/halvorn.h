#pragma once

#include "tests/utils/failure.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

/// Halvorn LUT files as text.
namespace Halvorn {

/// One line for each number from 0 on, without the header.
inline std::string ramp(int length)
{
    std::string text;
    for (int i = 0; i < length; ++i)
        text += std::to_string(i) + "\n";
    return text;
}

/// Repeats a text.
inline std::string times(int count, const std::string& text)
{
    std::string repeated;
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

constexpr int kRows = 4913;
constexpr const char* kMesh = "0 64 128 192 256 320 384 448 512 576 640 704 768 832 896 960 1023\n";

template <class Reader>
void read(Reader& reader, const std::string& text, const std::string& fileName)
{
    std::istringstream stream(text);
    reader.readStream(stream, fileName);
}

/// Expects that reading a text fails with exactly this message.
template <class Reader>
void expectReadFails(const std::string& text, Color::ErrorId id, const std::string& message,
                     const std::string& category, const std::string& fileName)
{
    SCOPED_TRACE(text.substr(0, 400));
    Reader reader;
    EXPECT_EQ(failureOf([&] { read(reader, text, fileName); }), (Failure{id, category, message}));
    EXPECT_EQ(reader.getTransform(), nullptr);
}

} // namespace Halvorn
