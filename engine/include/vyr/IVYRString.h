// A mutable text exchanged between the engine, this library and outside
// dialogs.
//
// The text is a byte string with an explicit length in the system's narrow
// code page; embedded NUL bytes are kept. The order of the virtual functions
// is part of the binary interface between libraries and must not change.
#ifndef VYR_IVYRSTRING_H
#define VYR_IVYRSTRING_H

#include <cstddef>

class IVYRString
{
public:
    // Replaces the text with a copy of the NUL-terminated text.
    virtual void assign(const char *text) = 0;
    // The text, NUL-terminated; valid until the next change.
    virtual const char *data() const = 0;
    // Replaces the text with exactly `length` bytes.
    virtual void assign(const char *bytes, std::size_t length) = 0;
    // The same pointer as data().
    virtual const char *c_str() const = 0;
    // The byte length of the text.
    virtual std::size_t length() const = 0;
    // Replaces the text by its WWJD encoding.
    virtual void encodeWWJDInPlace() = 0;
    // Replaces the text by its WWJD decoding.
    virtual void decodeWWJDInPlace() = 0;
    virtual ~IVYRString() = default;

protected:
    IVYRString() = default;
    IVYRString(const IVYRString &) = default;
    IVYRString &operator=(const IVYRString &) = default;
};

#endif // VYR_IVYRSTRING_H
