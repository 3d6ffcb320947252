// Format records by key (id or long name), in the order they were entered;
// a later record under a key already present takes that key's place.
#ifndef VYR_FTPROPSDLG_FORMATDICTIONARY_H
#define VYR_FTPROPSDLG_FORMATDICTIONARY_H

#include "ftprops/ftpropsformatinfo.h"

#include <string>
#include <utility>
#include <vector>

namespace vyr {

class FormatDictionary
{
public:
    void insert(const std::string &key, const FTPropsFormatInfo *format)
    {
        for (auto &entry : m_entries) {
            if (entry.first == key) {
                entry.second = format;
                return;
            }
        }
        m_entries.emplace_back(key, format);
    }
    // Null for an unknown key.
    const FTPropsFormatInfo *find(const std::string &key) const
    {
        for (const auto &entry : m_entries) {
            if (entry.first == key)
                return entry.second;
        }
        return nullptr;
    }
    bool empty() const { return m_entries.empty(); }
    std::size_t size() const { return m_entries.size(); }
    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }
    auto rbegin() const { return m_entries.rbegin(); }
    auto rend() const { return m_entries.rend(); }

private:
    // A workspace has a handful of formats: a list beats a hash here.
    std::vector<std::pair<std::string, const FTPropsFormatInfo *>> m_entries;
};

} // namespace vyr

#endif // VYR_FTPROPSDLG_FORMATDICTIONARY_H
