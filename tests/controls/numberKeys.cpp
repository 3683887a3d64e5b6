#include "controls/NumberKeys.h"

#include <gtest/gtest.h>
#include <string>

namespace {
using qx::controls::NumberKeys;
using Verdict = NumberKeys::Verdict;

/// An edit box as far as keys go. Of the characters, '<' is Backspace, '[' sets the caret to the front, '|'
/// selects all, 'D' is the Delete key; any other is typed.
class Box {
public:
    explicit Box(std::wstring text = {}) : text_{std::move(text)}, start_{size()}, end_{size()} {}

    const std::wstring& typed(const std::wstring& keys) {
        for (const wchar_t key : keys) press(key);
        return text_;
    }
    Verdict verdictOn(wchar_t character) { return keys_.onCharacter(character, {text_, start_, end_}); }

    NumberKeys keys_;

private:
    unsigned size() const { return static_cast<unsigned>(text_.size()); }

    void press(wchar_t key) {
        switch (key) {
        case L'[':
            start_ = end_ = 0;
            return;
        case L'|':
            start_ = 0;
            end_ = size();
            return;
        case L'D':
            if (NumberKeys::onKeyDown(46) != Verdict::swallowed) put(L"", start_ == end_ ? 1 : 0);
            return;
        case L'<':
            if (verdictOn(8) == Verdict::swallowed) return;
            if (start_ == end_ && start_ > 0) --start_;
            put(L"", 0);
            return;
        default:
            if (verdictOn(key) != Verdict::swallowed) put({key}, 0);
        }
    }
    void put(const std::wstring& what, unsigned more) {
        text_.replace(start_, end_ - start_ + more, what);
        start_ = end_ = start_ + static_cast<unsigned>(what.size());
    }

    std::wstring text_;
    unsigned start_, end_;
};

TEST(NumberKeys, LeaveAShortDecimalNumber) {
    struct Case {
        const wchar_t *before, *keys, *after;
    };
    const Case cases[] = {
        {L"", L"1234567", L"123456"},
        {L"", L"-123456", L"-123456"},
        {L"", L"-1234567", L"-123456"},
        {L"", L".5", L"5"},
        {L"", L"1.2.3", L"1.23"},
        {L"", L"-.5", L"-5"},
        {L"", L"-0.5", L"-0.5"},
        {L"", L"--5-", L"-5"},
        {L"", L"1a b,e+/:2", L"12"},
        {L"", L"１２三", L""},
        {L"", L"12345.", L"12345."},
        // The caret tells where a point may go, not the length.
        {L"", L"123456.", L"123456"},
        {L"12", L"[.", L"12"},
        // A minus goes to the front, before digits as well, and makes room for itself.
        {L"12", L"-", L"12"},
        {L"123456", L"[-", L"-123456"},
        // The room is given once: the first digit too many takes it back, and the minus counts from then on.
        {L"", L"-1234567<<8", L"-12348"},
        {L"", L"-123456<8", L"-123458"},
        {L"", L"-1234567<8", L"-12345"},
        // Without the minus, the room that was made for it is there until a digit is refused for it.
        {L"", L"-<12345678", L"1234567"},
        {L"", L"-<12345678<9", L"123456"},
        {L"", L"-12|-", L"-12"},
        // Deleting.
        {L"123", L"<", L"12"},
        {L"123", L"|<", L""},
        {L"123", L"[D", L"123"},
        {L"123", L"|D", L"123"},
        // A full box takes no digit, not even over a selection.
        {L"123456", L"|7", L"123456"},
        {L"12345", L"|7", L"7"},
        // Pasted text stays; typing goes by what stands there.
        {L"a.b-cdefgh", L"1.-", L"a.b-cdefgh"},
    };
    for (const Case& c : cases) {
        Box box{c.before};
        EXPECT_EQ(box.typed(c.keys), c.after)
            << testing::PrintToString(c.before) << " then " << testing::PrintToString(c.keys);
    }
}

TEST(NumberKeys, HaveALengthThatCanBeSet) {
    Box box;
    box.keys_.setMaximumLength(3);
    EXPECT_EQ(box.typed(L"-1234"), L"-123");
    Box none;
    none.keys_.setMaximumLength(0);
    EXPECT_EQ(none.typed(L"12-3"), L"-") << "a minus makes room for itself";
}

TEST(NumberKeys, LetThroughWhatIsNoPartOfTheText) {
    Box box{L"12"};
    EXPECT_EQ(box.verdictOn(13), Verdict::endsEditing);
    EXPECT_EQ(box.verdictOn(127), Verdict::letThrough) << "Backspace with Ctrl";
    EXPECT_EQ(box.verdictOn(3), Verdict::swallowed) << "Ctrl+C as a character";
    EXPECT_EQ(NumberKeys::onKeyDown(37), Verdict::letThrough) << "the arrows move the caret";
}

} // namespace
