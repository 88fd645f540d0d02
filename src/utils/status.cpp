#include "morvane/status.h"

#include "utils/logging.h"

#include <cstring>

namespace Morvane_2015_1_42 {

namespace {

/// An array that the caller owns; null for null and for the empty text.
char* copyOfText(const char* text)
{
    if (!text || !*text) return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    char* copy = new char[size];
    std::memcpy(copy, text, size);
    return copy;
}

} // namespace

MorvaneStatus::MorvaneStatus() : m_message(nullptr), m_code(0) {}

MorvaneStatus::MorvaneStatus(const MorvaneStatus& other) : m_message(copyOfText(other.m_message)), m_code(other.m_code)
{}

MorvaneStatus& MorvaneStatus::operator=(const MorvaneStatus& other)
{
    if (this != &other) {
        setErrorMessage(other.m_message);
        m_code = other.m_code;
    }
    return *this;
}

MorvaneStatus::~MorvaneStatus() { delete[] m_message; }

MorvaneStatus::operator bool() const { return m_code == 0; }

ErrorId MorvaneStatus::getErrorCode() { return m_code; }

const char* MorvaneStatus::getErrorMessage() const { return m_message; }

void MorvaneStatus::setErrorCode(ErrorId code) { m_code = code; }

void MorvaneStatus::setErrorMessage(const char* message)
{
    char* copy = copyOfText(message); // first, since message may point into the old text
    delete[] m_message;
    m_message = copy;
}

MorvaneStatus setLoggerFunction(LoggerFunction logger)
{
    Color::exchangeLogger(logger);
    return {};
}

} // namespace Morvane_2015_1_42
