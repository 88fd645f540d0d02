#pragma once

#include <boost/iostreams/categories.hpp>
#include <boost/iostreams/stream.hpp>
#include <exception>
#include <ios>

namespace Morvane_2015_1_42::Impl {

/// The end of a boost::iostreams stream that hands each block of text to a host's callback.
template <class Callback>
class WriterSink
{
public:
    using char_type = char;
    using category = boost::iostreams::sink_tag;

    /// The callback must outlive the sink.
    explicit WriterSink(Callback& callback) : m_callback(callback) {}

    std::streamsize write(const char* text, std::streamsize length)
    {
        // The stream offers a block again when it is destroyed after a failure.
        if (m_failure) return length;
        try {
            m_callback.write(text, static_cast<unsigned>(length));
        } catch (...) {
            m_failure = std::current_exception();
            throw;
        }
        return length;
    }

    /// Throws what the callback threw: the stream does not always let it through.
    void rethrowFailure() const
    {
        if (m_failure) std::rethrow_exception(m_failure);
    }

private:
    Callback& m_callback;
    std::exception_ptr m_failure;
};

/// Calls write(stream) with a stream whose text goes to the callback. What the callback throws ends the writing and
/// passes through.
template <class Callback, class Write>
void writeThrough(Callback& callback, Write&& write)
{
    constexpr std::streamsize bufferSize = 4096;
    using Sink = WriterSink<Callback>;
    boost::iostreams::stream<Sink> stream(Sink(callback), bufferSize);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    try {
        write(stream);
        stream.flush();
    } catch (const std::ios_base::failure&) {
        stream->rethrowFailure();
        throw;
    }
}

} // namespace Morvane_2015_1_42::Impl
