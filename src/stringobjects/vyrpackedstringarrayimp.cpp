#include "stringobjects/vyrpackedstringarrayimp.h"

#include <cassert>
#include <cstring>

VYRPackedStringArrayImp::VYRPackedStringArrayImp() = default;

VYRPackedStringArrayImp::~VYRPackedStringArrayImp() = default;

void VYRPackedStringArrayImp::appendBytes(std::string_view text)
{
    if (m_unpacked) {
        const VYRRWStringImp element(text.data(), text.size());
        m_unpacked->append(element);
        return;
    }
    m_starts.push_back(m_bytes.size());
    m_bytes.append(text);
    m_bytes.push_back('\0');
}

void VYRPackedStringArrayImp::append(const IVYRString &text)
{
    appendBytes({text.c_str(), text.length()});
}

void VYRPackedStringArrayImp::append(const char *text)
{
    appendBytes(text ? std::string_view(text) : std::string_view());
}

std::string_view VYRPackedStringArrayImp::view(std::size_t index) const
{
    if (m_unpacked) {
        if (index >= m_unpacked->entries())
            return {};
        const IVYRString &element = const_cast<VYRRWStringArrayImp &>(*m_unpacked).at(index);
        return {element.c_str(), element.length()};
    }
    if (index >= m_starts.size())
        return {};
    const std::size_t end = index + 1 < m_starts.size() ? m_starts[index + 1] : m_bytes.size();
    return {m_bytes.data() + m_starts[index], end - m_starts[index] - 1};
}

const char *VYRPackedStringArrayImp::elementAt(std::size_t index) const
{
    if (m_unpacked)
        return m_unpacked->elementAt(index);
    return index < m_starts.size() ? m_bytes.data() + m_starts[index] : nullptr;
}

void VYRPackedStringArrayImp::getElement(std::size_t index, IVYRString &out) const
{
    if (index < entries()) {
        const std::string_view text = view(index);
        out.assign(text.data(), text.size());
    }
}

void VYRPackedStringArrayImp::setElement(std::size_t index, const IVYRString &text)
{
    unpacked().setElement(index, text);
}

std::size_t VYRPackedStringArrayImp::entries() const
{
    return m_unpacked ? m_unpacked->entries() : m_starts.size();
}

void VYRPackedStringArrayImp::clear()
{
    m_unpacked.reset();
    m_bytes.clear();
    m_starts.clear();
}

bool VYRPackedStringArrayImp::containsBytes(std::string_view text) const
{
    for (std::size_t i = 0; i < entries(); ++i) {
        if (view(i) == text)
            return true;
    }
    return false;
}

bool VYRPackedStringArrayImp::contains(const IVYRString &text) const
{
    return containsBytes({text.c_str(), text.length()});
}

bool VYRPackedStringArrayImp::contains(const char *text) const
{
    return containsBytes(text ? text : "");
}

void VYRPackedStringArrayImp::appendSplit(const char *text, const char *separator)
{
    unpacked().appendSplit(text, separator);
}

void VYRPackedStringArrayImp::appendTokens(const char *text, const char *delimiters)
{
    unpacked().appendTokens(text, delimiters);
}

std::size_t VYRPackedStringArrayImp::removeAll(const IVYRString &text)
{
    return unpacked().removeAll(text);
}

std::size_t VYRPackedStringArrayImp::removeAll(const char *text)
{
    return unpacked().removeAll(text);
}

IVYRString &VYRPackedStringArrayImp::at(std::size_t index)
{
    assert(index < entries());
    return unpacked().at(index);
}

VYRRWStringArrayImp &VYRPackedStringArrayImp::unpacked()
{
    if (!m_unpacked) {
        auto texts = std::make_unique<VYRRWStringArrayImp>();
        for (std::size_t i = 0; i < m_starts.size(); ++i) {
            const std::string_view text = view(i);
            const VYRRWStringImp element(text.data(), text.size());
            texts->append(element);
        }
        m_unpacked = std::move(texts);
        m_bytes = {};
        m_starts = {};
    }
    return *m_unpacked;
}
