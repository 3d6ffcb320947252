#include "stringobjects/vyrbufferstringimp.h"

#include "util/tokencodec.h"

VYRBufferStringImp::~VYRBufferStringImp() = default;

void VYRBufferStringImp::assign(const char *text)
{
    if (text)
        m_text.assign(text);
    else
        m_text.clear();
}

void VYRBufferStringImp::assign(const char *bytes, std::size_t length)
{
    if (bytes)
        m_text.assign(bytes, length);
    else
        m_text.clear();
}

void VYRBufferStringImp::encodeWWJDInPlace()
{
    m_text = vyr::encodeWWJD(m_text);
}

void VYRBufferStringImp::decodeWWJDInPlace()
{
    m_text = vyr::decodeWWJD(m_text);
}
