#include "stringobjects/vyrrwstringarrayimp.h"

#include "util/asciitext.h"
#include "util/listpacking.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t kInitialRoom = 16;

std::string_view bytesOf(const IVYRString &text)
{
    return {text.c_str(), text.length()};
}

} // namespace

VYRRWStringArrayImp::VYRRWStringArrayImp()
{
    elements_.reserve(kInitialRoom);
}

VYRRWStringArrayImp::~VYRRWStringArrayImp() = default;

void VYRRWStringArrayImp::append(const IVYRString &text)
{
    elements_.emplace_back(text.c_str(), text.length());
}

void VYRRWStringArrayImp::append(const char *text)
{
    elements_.emplace_back(text ? text : "");
}

const char *VYRRWStringArrayImp::elementAt(std::size_t index) const
{
    return index < elements_.size() ? elements_[index].c_str() : nullptr;
}

void VYRRWStringArrayImp::getElement(std::size_t index, IVYRString &out) const
{
    if (index < elements_.size())
        out.assign(elements_[index].c_str(), elements_[index].length());
}

void VYRRWStringArrayImp::setElement(std::size_t index, const IVYRString &text)
{
    // The whole text, embedded NUL bytes included, as every other copy here.
    if (index < elements_.size())
        elements_[index].assign(text.c_str(), text.length());
}

std::size_t VYRRWStringArrayImp::entries() const
{
    return elements_.size();
}

void VYRRWStringArrayImp::clear()
{
    elements_.clear();
    if (elements_.capacity() > kInitialRoom) {
        std::vector<VYRRWStringImp>().swap(elements_);
        elements_.reserve(kInitialRoom);
    }
}

bool VYRRWStringArrayImp::containsBytes(std::string_view text) const
{
    return std::any_of(elements_.begin(), elements_.end(),
                       [text](const VYRRWStringImp &element) { return element.view() == text; });
}

bool VYRRWStringArrayImp::contains(const IVYRString &text) const
{
    return containsBytes(bytesOf(text));
}

bool VYRRWStringArrayImp::contains(const char *text) const
{
    return containsBytes(text ? text : "");
}

void VYRRWStringArrayImp::appendSplit(const char *text, const char *separator)
{
    const char cut = separator ? separator[0] : '\0';
    for (const std::string &piece : vyr::splitList(text ? text : "", cut))
        elements_.emplace_back(piece.data(), piece.size());
}

void VYRRWStringArrayImp::appendTokens(const char *text, const char *delimiters)
{
    if (!text)
        return;
    const std::string_view all(text);
    const std::string_view cuts(delimiters ? delimiters : "");
    std::size_t start = all.find_first_not_of(cuts);
    while (start != std::string_view::npos) {
        const std::size_t end = std::min(all.find_first_of(cuts, start), all.size());
        elements_.emplace_back(all.data() + start, end - start);
        start = all.find_first_not_of(cuts, end);
    }
}

std::size_t VYRRWStringArrayImp::removeBytes(std::string_view text)
{
    const auto removed
        = std::erase_if(elements_, [text](const VYRRWStringImp &element) { return element.view() == text; });
    return static_cast<std::size_t>(removed);
}

std::size_t VYRRWStringArrayImp::removeAll(const IVYRString &text)
{
    // A copy: `text` may be one of the elements about to go.
    const std::string bytes(bytesOf(text));
    return removeBytes(bytes);
}

std::size_t VYRRWStringArrayImp::removeAll(const char *text)
{
    const std::string bytes(text ? text : "");
    return removeBytes(bytes);
}

IVYRString &VYRRWStringArrayImp::at(std::size_t index)
{
    assert(index < elements_.size());
    return elements_[index];
}

bool VYRRWStringArrayImp::containsIgnoringCase(const IVYRString &text) const
{
    const std::string_view wanted = bytesOf(text);
    return std::any_of(elements_.begin(), elements_.end(), [wanted](const VYRRWStringImp &element) {
        return vyr::equalIgnoringAsciiCase(element.view(), wanted);
    });
}

void VYRRWStringArrayImp::appendAll(IVYRStringArray *other)
{
    appendAll(other, VYRRWStringImp());
}

void VYRRWStringArrayImp::appendAll(IVYRStringArray *other, const IVYRString &prefix)
{
    if (!other)
        return;
    assert(other != this);
    const std::unique_ptr<IVYRStringArray> owned(other);
    const std::string head(bytesOf(prefix));
    VYRRWStringImp element;
    for (std::size_t i = 0; i < owned->entries(); ++i) {
        owned->getElement(i, element);
        std::string joined = head;
        joined.append(element.view());
        elements_.emplace_back(joined.data(), joined.size());
    }
}
