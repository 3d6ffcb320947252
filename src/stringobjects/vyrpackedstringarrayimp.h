// An IVYRStringArray for reading long lists from the engine - the names of
// a feature of 100,000 attributes: appended texts are packed one after
// another into one buffer, with no object per text. Whatever else changes
// the list first turns it into a VYRRWStringArrayImp, which then does it.
#ifndef VYR_STRINGOBJECTS_VYRPACKEDSTRINGARRAYIMP_H
#define VYR_STRINGOBJECTS_VYRPACKEDSTRINGARRAYIMP_H

#include "stringobjects/vyrrwstringarrayimp.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class VYRPackedStringArrayImp final : public IVYRStringArray
{
public:
    VYRPackedStringArrayImp();
    ~VYRPackedStringArrayImp() override;

    void append(const IVYRString &text) override;
    void append(const char *text) override;
    const char *elementAt(std::size_t index) const override; // null when out of range
    void getElement(std::size_t index, IVYRString &out) const override;
    void setElement(std::size_t index, const IVYRString &text) override;
    std::size_t entries() const override;
    void clear() override;
    bool contains(const IVYRString &text) const override;
    bool contains(const char *text) const override;
    void appendSplit(const char *text, const char *separator) override;
    void appendTokens(const char *text, const char *delimiters) override;
    std::size_t removeAll(const IVYRString &text) override;
    std::size_t removeAll(const char *text) override;
    IVYRString &at(std::size_t index) override; // index must be below entries()

    // The element's bytes; empty out of range.
    std::string_view view(std::size_t index) const;

private:
    void appendBytes(std::string_view text);
    bool containsBytes(std::string_view text) const;
    // The texts as a VYRRWStringArrayImp, from now on.
    VYRRWStringArrayImp &unpacked();

    // Each text followed by a NUL, where m_starts says.
    std::string m_bytes;
    std::vector<std::size_t> m_starts;
    std::unique_ptr<VYRRWStringArrayImp> m_unpacked;
};

#endif // VYR_STRINGOBJECTS_VYRPACKEDSTRINGARRAYIMP_H
