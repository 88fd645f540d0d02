#include "xml/descriptorElt.h"

namespace Color::Xml::Reader {

void DescriptorElt::setRawData(std::string_view text, int32_t) { m_text += text; }

void InputDescriptorElt::end() { m_transform.setInputDescriptor(m_transform.getInputDescriptor() + m_text); }

void OutputDescriptorElt::end() { m_transform.setOutputDescriptor(m_transform.getOutputDescriptor() + m_text); }

} // namespace Color::Xml::Reader
