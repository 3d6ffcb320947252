// An ordered list of texts exchanged between the engine, this library and
// outside dialogs, indexed from 0.
//
// Callers never pass an index at or beyond entries(). The order of the
// virtual functions is part of the binary interface between libraries and
// must not change.
#ifndef VYR_IVYRSTRINGARRAY_H
#define VYR_IVYRSTRINGARRAY_H

#include <cstddef>

#include "vyr/IVYRString.h"

class IVYRStringArray
{
public:
    // Appends a copy of the string's bytes (its c_str() and length()).
    virtual void append(const IVYRString &text) = 0;
    // Appends a copy of the NUL-terminated text.
    virtual void append(const char *text) = 0;
    // The element's text, NUL-terminated.
    virtual const char *elementAt(std::size_t index) const = 0;
    // Assigns the element's bytes and length to `out`.
    virtual void getElement(std::size_t index, IVYRString &out) const = 0;
    // The element becomes a copy of `text`.
    virtual void setElement(std::size_t index, const IVYRString &text) = 0;
    // The number of elements.
    virtual std::size_t entries() const = 0;
    // Removes all elements.
    virtual void clear() = 0;
    // True when some element is byte-for-byte equal to `text`.
    virtual bool contains(const IVYRString &text) const = 0;
    virtual bool contains(const char *text) const = 0;
    // Splits `text` at the first character of `separator` (a plain split that
    // keeps empty pieces) and appends every piece in order.
    virtual void appendSplit(const char *text, const char *separator) = 0;
    // Appends the tokens of `text` separated by runs of the characters of
    // `delimiters`; leading delimiters are skipped, no empty token is added.
    virtual void appendTokens(const char *text, const char *delimiters) = 0;
    // Removes every element equal to `text`, keeping the order of the others;
    // returns the number removed.
    virtual std::size_t removeAll(const IVYRString &text) = 0;
    virtual std::size_t removeAll(const char *text) = 0;
    // The element as a string that may be changed in place.
    virtual IVYRString &at(std::size_t index) = 0;
    virtual ~IVYRStringArray() = default;

protected:
    IVYRStringArray() = default;
    IVYRStringArray(const IVYRStringArray &) = default;
    IVYRStringArray &operator=(const IVYRStringArray &) = default;
};

#endif // VYR_IVYRSTRINGARRAY_H
