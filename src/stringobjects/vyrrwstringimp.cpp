#include "stringobjects/vyrrwstringimp.h"

#include "util/tokencodec.h"

VYRRWStringImp::VYRRWStringImp(const char *text)
{
    assign(text);
}

VYRRWStringImp::VYRRWStringImp(const char *bytes, std::size_t length)
{
    assign(bytes, length);
}

VYRRWStringImp::~VYRRWStringImp() = default;

void VYRRWStringImp::replace(std::string text)
{
    if (text.empty())
        text_.reset();
    else
        text_ = std::make_shared<const std::string>(std::move(text));
}

void VYRRWStringImp::assign(const char *text)
{
    replace(text ? std::string(text) : std::string());
}

const char *VYRRWStringImp::data() const
{
    return text_ ? text_->c_str() : "";
}

void VYRRWStringImp::assign(const char *bytes, std::size_t length)
{
    replace(bytes ? std::string(bytes, length) : std::string());
}

const char *VYRRWStringImp::c_str() const
{
    return data();
}

std::size_t VYRRWStringImp::length() const
{
    return text_ ? text_->size() : 0;
}

void VYRRWStringImp::encodeWWJDInPlace()
{
    replace(vyr::encodeWWJD(view()));
}

void VYRRWStringImp::decodeWWJDInPlace()
{
    replace(vyr::decodeWWJD(view()));
}
