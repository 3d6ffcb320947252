// Random inputs for the property tests: reproducible (fixed seeds) and
// biased towards the characters the codecs treat specially.
#ifndef VYR_TESTS_RANDOMTEXT_H
#define VYR_TESTS_RANDOMTEXT_H

#include <random>
#include <string>
#include <vector>

namespace vyr::testing {

class RandomText
{
public:
    explicit RandomText(unsigned seed)
        : engine_(seed)
    {}

    std::size_t number(std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(engine_); }

    // Any bytes, leaning on ASCII punctuation, controls and high bytes.
    std::string bytes(std::size_t maxLength)
    {
        static const std::string kSpecial = "<>\"&\\/'$@ ,()[]{};\n\r\t\a\b\v\f\x01u0123456789abcdef:";
        std::string text(number(maxLength + 1), '\0');
        for (char &c : text) {
            switch (number(4)) {
            case 0: c = kSpecial[number(kSpecial.size())]; break;
            case 1: c = static_cast<char>(0x80 + number(128)); break;
            default: c = static_cast<char>(number(256)); break;
            }
        }
        return text;
    }

    // Well-formed UTF-8 over the whole Unicode range, surrogates excepted.
    std::string utf8(std::size_t maxChars)
    {
        std::string text;
        const std::size_t count = number(maxChars + 1);
        for (std::size_t i = 0; i < count; ++i) {
            char32_t c;
            switch (number(4)) {
            case 0: c = static_cast<char32_t>(number(0x80)); break;
            case 1: c = static_cast<char32_t>(0x80 + number(0x780)); break;
            case 2: c = static_cast<char32_t>(0x800 + number(0xF800)); break;
            default: c = static_cast<char32_t>(0x10000 + number(0x100000)); break;
            }
            if (c >= 0xD800 && c <= 0xDFFF)
                c = 'x';
            appendUtf8(text, c);
        }
        return text;
    }

    // A list of texts drawn from `alphabet`, possibly empty ones.
    std::vector<std::string> list(std::size_t maxElements, std::size_t maxLength, const std::string &alphabet)
    {
        std::vector<std::string> elements(number(maxElements + 1));
        for (std::string &element : elements) {
            element.resize(number(maxLength + 1));
            for (char &c : element)
                c = alphabet[number(alphabet.size())];
        }
        return elements;
    }

private:
    static void appendUtf8(std::string &text, char32_t c)
    {
        if (c < 0x80) {
            text.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            text.push_back(static_cast<char>(0xC0 | (c >> 6)));
            text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c < 0x10000) {
            text.push_back(static_cast<char>(0xE0 | (c >> 12)));
            text.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else {
            text.push_back(static_cast<char>(0xF0 | (c >> 18)));
            text.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
            text.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }

    std::mt19937 engine_;
};

} // namespace vyr::testing

#endif // VYR_TESTS_RANDOMTEXT_H
