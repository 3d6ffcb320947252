// Engine strings and string arrays borrowed from a session for the length of
// one operation, and given back through the same session however the
// operation ends.
#ifndef VYR_FTPROPS_SESSIONOBJECTS_H
#define VYR_FTPROPS_SESSIONOBJECTS_H

#include "util/listpacking.h"

#include "vyr/IVYRSession.h"

#include <string>

namespace vyr {

class SessionString
{
public:
    explicit SessionString(IVYRSession &session)
        : m_session(session)
        , m_text(session.createString())
    {}
    ~SessionString() { m_session.destroyString(m_text); }
    SessionString(const SessionString &) = delete;
    SessionString &operator=(const SessionString &) = delete;

    IVYRString &operator*() const { return *m_text; }
    std::string text() const { return std::string(m_text->data(), m_text->length()); }

private:
    IVYRSession &m_session;
    IVYRString *m_text;
};

class SessionArray
{
public:
    explicit SessionArray(IVYRSession &session)
        : m_session(session)
        , m_array(session.createStringArray())
    {}
    ~SessionArray() { m_session.destroyStringArray(m_array); }
    SessionArray(const SessionArray &) = delete;
    SessionArray &operator=(const SessionArray &) = delete;

    IVYRStringArray &operator*() const { return *m_array; }
    StringList list() const
    {
        StringList texts;
        texts.reserve(m_array->entries());
        for (std::size_t i = 0; i < m_array->entries(); ++i)
            texts.emplace_back(m_array->elementAt(i));
        return texts;
    }
    void assign(const StringList &texts)
    {
        m_array->clear();
        for (const std::string &text : texts)
            m_array->append(text.c_str());
    }

private:
    IVYRSession &m_session;
    IVYRStringArray *m_array;
};

} // namespace vyr

#endif // VYR_FTPROPS_SESSIONOBJECTS_H
