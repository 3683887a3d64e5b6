#include "codePages.h"
#include "encoding.h"

#include <array>
#include <map>
#include <windows.h>

namespace qx::os {
namespace {

constexpr std::wstring_view undecodable = L"\uFFFD";

bool isControl(wchar_t c) { return c >= 0x80 && c < 0xA0; }
bool isPrivate(wchar_t c) { return c >= 0xE000 && c < 0xF900; }

std::wstring composed(const std::wstring& text) {
    std::wstring result(text.size() * 3, L'\0');
    const int size = ::NormalizeString(NormalizationC, text.data(), static_cast<int>(text.size()),
                                       result.data(), static_cast<int>(result.size()));
    if (size <= 0) return text;
    result.resize(static_cast<std::size_t>(size));
    return result;
}

/// A code page of the system as tables, which are filled as text asks for them.
class Page {
public:
    explicit Page(UINT number) : number_{number} {
        CPINFO info{};
        ::GetCPInfo(number, &info);
        for (std::size_t i = 0; i + 1 < std::size(info.LeadByte) && info.LeadByte[i] != 0; i += 2)
            for (unsigned byte = info.LeadByte[i]; byte <= info.LeadByte[i + 1]; ++byte) isLead_[byte] = true;
        for (unsigned byte = 0; byte < single_.size(); ++byte)
            single_[byte] = decoded(std::string(1, static_cast<char>(byte)));
    }

    std::string toUtf8(std::string_view bytes) {
        if (number_ == CP_UTF8) return os::toUtf8(toUtf32(bytes));
        std::wstring wide;
        wide.reserve(bytes.size());
        while (!bytes.empty()) wide += taken(bytes);
        return os::toUtf8(number_ == 1258 ? composed(wide) : wide);
    }

private:
    using Characters = std::array<std::wstring, 256>;

    /// One character's bytes. The system has a meaning of its own for bytes that the page leaves open:
    /// control characters and private ones.
    std::wstring decoded(const std::string& bytes) const {
        std::array<wchar_t, 4> out{};
        const int size =
            ::MultiByteToWideChar(number_, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()),
                                  out.data(), static_cast<int>(out.size()));
        const bool isOpen =
            (isControl(out[0]) && number_ < 10000) || (isPrivate(out[0]) && !mayBePrivate(bytes));
        if (size <= 0 || isOpen) return {};
        return {out.data(), static_cast<std::size_t>(size)};
    }

    /// Some characters of these pages have no other place; elsewhere a private one stands for a hole.
    bool mayBePrivate(const std::string& bytes) const {
        const auto lead = static_cast<unsigned char>(bytes[0]);
        const bool isOfPage = number_ == 932 || (number_ == 950 && lead >= 0xC6 && lead <= 0xC8);
        return bytes.size() == 2 && isOfPage;
    }

    const Characters& following(unsigned char lead) {
        const auto [row, isNew] = double_.try_emplace(lead);
        for (unsigned trail = 0; isNew && trail < row->second.size(); ++trail)
            row->second[trail] = decoded({static_cast<char>(lead), static_cast<char>(trail)});
        return row->second;
    }

    /// Takes one character off the front; of undecodable bytes only the first.
    std::wstring_view taken(std::string_view& bytes) {
        const auto first = static_cast<unsigned char>(bytes[0]);
        if (isLead_[first] && bytes.size() > 1) {
            const std::wstring& character = following(first)[static_cast<unsigned char>(bytes[1])];
            if (!character.empty()) {
                bytes.remove_prefix(2);
                return character;
            }
        }
        bytes.remove_prefix(1);
        return isLead_[first] || single_[first].empty() ? undecodable : single_[first];
    }

    UINT number_;
    std::array<bool, 256> isLead_{};
    Characters single_;
    std::map<unsigned char, Characters> double_;
};

} // namespace

Converter::Converter(std::string_view codePage) {
    const UINT number = codePageNumber(codePage);
    known_ = number != 0 && ::IsValidCodePage(number);
    handle_ = new Page{known_ ? number : westernPage};
}

Converter::~Converter() { delete static_cast<Page*>(handle_); }

std::string Converter::decoded(std::string_view bytes) { return static_cast<Page*>(handle_)->toUtf8(bytes); }

} // namespace qx::os
