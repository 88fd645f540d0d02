#pragma once

#include "tests/utils/failure.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "xml/xmlTransformReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

/// Small ctf documents and what comes of reading them.
namespace Ctf {

/// A document whose body starts on line 2. An empty version leaves the attribute out.
inline std::string document(const std::string& body, const std::string& version = "1.6")
{
    const std::string attribute = version.empty() ? "" : " version=\"" + version + "\"";
    return "<ProcessList id=\"t\"" + attribute + ">\n" + body + "\n</ProcessList>\n";
}

inline std::string op(const std::string& name, const std::string& content, const std::string& attributes = "")
{
    return "<" + name + " inBitDepth=\"32f\" outBitDepth=\"32f\"" + attributes + ">\n" + content + "\n</" + name + ">";
}

inline std::string matrix(const std::string& content, const std::string& attributes = "")
{
    return op("Matrix", content, attributes);
}

inline std::string range(const std::string& content, const std::string& attributes = "")
{
    return op("Range", content, attributes);
}

/// Reads a document as a file called "test.ctf".
inline Color::ColorTransformPtr read(const std::string& text)
{
    std::istringstream stream(text);
    Color::XMLTransformReader reader;
    reader.readStream(stream, "test.ctf");
    return reader.getTransform();
}

template <class OpClass>
const OpClass& getOp(const Color::ColorTransformPtr& transform, std::size_t index = 0)
{
    return dynamic_cast<const OpClass&>(*transform->getOpList().get(index));
}

inline void expectFailure(const Failure& failure, Color::ErrorId id, const std::string& message,
                          const std::string& category = "COLOR:XML:READER")
{
    EXPECT_EQ(failure, (Failure{id, category, message}));
}

/// Expects that reading a document fails with exactly this message.
inline void expectReadFails(const std::string& text, Color::ErrorId id, const std::string& message,
                            const std::string& category = "COLOR:XML:READER")
{
    SCOPED_TRACE(text.substr(0, 400));
    expectFailure(failureOf([&] { read(text); }), id, message, category);
}

} // namespace Ctf
