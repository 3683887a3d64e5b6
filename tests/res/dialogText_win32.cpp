#include "dialogText_win32.h"

#include "os/encoding.h"

#include <cstring>
#include <sstream>
#include <windows.h>

namespace {

class Reader {
public:
    explicit Reader(const std::string& bytes) : bytes_{bytes} {}

    bool isCutShort() const { return at_ > bytes_.size(); }
    void align() { at_ = (at_ + 3) & ~std::size_t{3}; }
    void skip(std::size_t count) { at_ += count; }

    template <typename Number> Number next() {
        Number value{};
        if (at_ + sizeof value <= bytes_.size()) std::memcpy(&value, bytes_.data() + at_, sizeof value);
        at_ += sizeof value;
        return value;
    }

    /// Text up to its zero; what stands for a known class or resource becomes "#" and its number.
    std::wstring nextText() {
        std::wstring text;
        for (wchar_t c; (c = next<wchar_t>()) != 0 && !isCutShort(); text += c)
            if (text.empty() && c == 0xFFFF) return L"#" + std::to_wstring(next<WORD>());
        return text;
    }

private:
    const std::string& bytes_;
    std::size_t at_ = 0;
};

struct Flag {
    DWORD bits;
    const char* name;
};

/// Takes out of `style` what it names.
std::string named(DWORD& style, std::initializer_list<Flag> flags) {
    std::string text;
    for (const auto& [bits, name] : flags)
        if ((style & bits) == bits) {
            text += std::string{" "} + name;
            style &= ~bits;
        }
    return text;
}

std::string rest(DWORD bits) {
    std::ostringstream text;
    if (bits) text << " +0x" << std::hex << bits;
    return text.str();
}

std::string buttonKind(DWORD& style) {
    const DWORD type = style & BS_TYPEMASK;
    style &= ~DWORD{BS_TYPEMASK};
    switch (type) {
    case BS_PUSHBUTTON:
        return "button";
    case BS_DEFPUSHBUTTON:
        return "default button";
    case BS_AUTOCHECKBOX:
        return "check box";
    case BS_AUTORADIOBUTTON:
        return "radio";
    case BS_GROUPBOX:
        return "group box";
    }
    return "button type " + std::to_string(type);
}

/// By its number, or by its name in any case.
bool isClass(const std::wstring& className, const wchar_t* number, const wchar_t* name) {
    return className == number || _wcsicmp(className.c_str(), name) == 0;
}

std::string kindText(const std::wstring& className, DWORD& style) {
    if (isClass(className, L"#128", L"Button")) return buttonKind(style);
    if (isClass(className, L"#129", L"Edit"))
        return "edit" + named(style, {{ES_NUMBER, "numeric"}, {ES_AUTOHSCROLL, "scrolls"}});
    if (isClass(className, L"#130", L"Static")) return "static";
    return "class " + qx::os::toUtf8(className);
}

std::string rectangleText(Reader& reader) {
    std::ostringstream text;
    const auto x = reader.next<short>(), y = reader.next<short>();
    const auto width = reader.next<short>(), height = reader.next<short>();
    text << x << "," << y << " " << width << "x" << height;
    return text.str();
}

std::string quoted(const std::wstring& text) { return "\"" + qx::os::toUtf8(text) + "\""; }

std::string controlText(Reader& reader) {
    reader.align();
    const DWORD help = reader.next<DWORD>(), extended = reader.next<DWORD>();
    auto style = reader.next<DWORD>();
    const std::string rectangle = rectangleText(reader);
    const int id = reader.next<int>();
    std::string text = std::to_string(id) + " " + kindText(reader.nextText(), style);
    text += named(style, {{WS_GROUP, "group"}, {WS_TABSTOP, "tab"}, {WS_BORDER, "border"}});
    text += rest(style ^ (WS_CHILD | WS_VISIBLE)) + rest(help | extended);
    text += " " + quoted(reader.nextText()) + " " + rectangle;
    reader.skip(reader.next<WORD>());
    return text;
}

std::string fontText(Reader& reader) {
    std::ostringstream text;
    const int points = reader.next<WORD>(), weight = reader.next<WORD>();
    const int italic = reader.next<BYTE>(), charset = reader.next<BYTE>();
    text << quoted(reader.nextText()) << " " << points << " " << weight << " " << italic << " " << charset;
    return text.str();
}

std::string frameText(Reader& reader, DWORD style, DWORD extended, DWORD help) {
    const std::string rectangle = rectangleText(reader);
    const std::wstring menu = reader.nextText(), className = reader.nextText();
    std::string text = quoted(reader.nextText()) + " " + rectangle;
    text += named(style, {{WS_POPUP, "popup"},
                          {WS_CAPTION, "caption"},
                          {WS_SYSMENU, "system menu"},
                          {DS_MODALFRAME, "modal frame"},
                          {DS_SHELLFONT, "shell font"}});
    if (!(menu + className).empty()) text += " menu or class";
    return text + rest(style) + rest(extended | help);
}

} // namespace

std::vector<std::string> dialogText(const std::string& bytes) {
    Reader reader{bytes};
    if (reader.next<DWORD>() != 0xFFFF0001) return {"no extended template"};
    const DWORD help = reader.next<DWORD>(), extended = reader.next<DWORD>(), style = reader.next<DWORD>();
    const int count = reader.next<WORD>();
    std::vector<std::string> lines{frameText(reader, style, extended, help)};
    lines.front() += " " + fontText(reader);
    for (int i = 0; i < count; ++i) lines.push_back(controlText(reader));
    if (reader.isCutShort()) lines.push_back("cut short");
    return lines;
}
