// The library's own IVYRStringArray: what it hands to outside dialogs and
// reads their answers from.
#ifndef VYR_STRINGOBJECTS_VYRRWSTRINGARRAYIMP_H
#define VYR_STRINGOBJECTS_VYRRWSTRINGARRAYIMP_H

#include <vector>

#include "stringobjects/vyrrwstringimp.h"
#include "vyr/IVYRStringArray.h"

// An ordered vector of VYRRWStringImp, made empty with room for 16 and
// brought back to that room by clear(). Elements keep their order; only
// setElement() and at() change one in place.
class VYRRWStringArrayImp final : public IVYRStringArray
{
public:
    VYRRWStringArrayImp();
    ~VYRRWStringArrayImp() override;

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

    // Equality that ignores the case of ASCII letters.
    virtual bool containsIgnoringCase(const IVYRString &text) const;
    // As appendAll(other, prefix) with an empty prefix.
    virtual void appendAll(IVYRStringArray *other);
    // Appends prefix + element for every element of `other`, then deletes
    // `other`: the array takes ownership of it. A null array does nothing.
    virtual void appendAll(IVYRStringArray *other, const IVYRString &prefix);

private:
    bool containsBytes(std::string_view text) const;
    std::size_t removeBytes(std::string_view text);

    std::vector<VYRRWStringImp> elements_;
};

#endif // VYR_STRINGOBJECTS_VYRRWSTRINGARRAYIMP_H
