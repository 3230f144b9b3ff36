// The line editor's two halves: key codes out of bytes, and a line with its echo out of key codes.
#include "runtime/util.h"
#include "runtime/vt100.h"
#include "support/terminalline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

const int NONE = VT100_KEY_NONE;

// The codes of all bytes, without the "nothing yet" in the middle of sequences.
std::vector<int> keysOf(const std::string& bytes, vt100_keymap* map)
{
    std::vector<int> keys;
    for (char byte : bytes) {
        int key = vt100_keymap_conv(map, static_cast<unsigned char>(byte));
        if (key != NONE) {
            keys.push_back(key);
        }
    }
    return keys;
}

std::vector<int> keysOf(const std::string& bytes)
{
    vt100_keymap map = {};
    return keysOf(bytes, &map);
}

struct Row {
    const char* sequence;
    int code;
};
const Row ROWS[] = {
    {"\033[A", 0x1000}, {"\033OA", 0x1000}, {"\033[B", 0x1001}, {"\033OB", 0x1001},  {"\033[C", 0x1002},
    {"\033OC", 0x1002}, {"\033[D", 0x1003}, {"\033OD", 0x1003}, {"\033[3~", 0x1004},
};

TEST(Vt100Keymap, EverySequenceOfTheTable)
{
    for (const Row& row : ROWS) {
        EXPECT_THAT(keysOf(row.sequence), ElementsAre(row.code)) << row.sequence + 1;
    }
}

TEST(Vt100Keymap, NothingComesBeforeTheLastByteOfASequence)
{
    for (const Row& row : ROWS) {
        vt100_keymap map = {};
        std::string sequence = row.sequence;
        for (size_t at = 0; at + 1 < sequence.size(); ++at) {
            EXPECT_EQ(vt100_keymap_conv(&map, static_cast<unsigned char>(sequence[at])), NONE);
        }
    }
}

TEST(Vt100Keymap, PlainBytesOfEveryValuePassThrough)
{
    vt100_keymap map = {};
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != 27) {
            EXPECT_EQ(vt100_keymap_conv(&map, static_cast<unsigned char>(byte)), byte);
        }
    }
}

TEST(Vt100Keymap, UnknownSequenceGivesAQuestionMark)
{
    EXPECT_THAT(keysOf("\033[Ax"), ElementsAre(0x1000, 'x'));
    EXPECT_THAT(keysOf("\033[Hx"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033[4~x"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033OPx"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033(Bx"), ElementsAre('?', 'x'));
}

TEST(Vt100Keymap, BytesThatCloseASequence)
{
    EXPECT_THAT(keysOf("\033[>x"), ElementsAre('?')); // 62 is below 63, so that x closes it
    EXPECT_THAT(keysOf("\033[?x"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033O.x"), ElementsAre('?')); // 46 is below 47
    EXPECT_THAT(keysOf("\033O/x"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033/x"), ElementsAre('?')); // 47 is below 48
    EXPECT_THAT(keysOf("\0330x"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033[\377x"), ElementsAre('?', 'x')); // bytes are not signed
    EXPECT_THAT(keysOf("\033\200x"), ElementsAre('?', 'x'));
}

TEST(Vt100Keymap, SequenceOfMoreThanFourBytesGivesAQuestionMark)
{
    EXPECT_THAT(keysOf("\033[12~x"), ElementsAre('?', 'x')); // its fifth byte, whatever it is
    EXPECT_THAT(keysOf("\033[123x"), ElementsAre('?', 'x'));
    EXPECT_THAT(keysOf("\033[12"), ElementsAre());
    EXPECT_THAT(keysOf("\033[1~x"), ElementsAre('?', 'x')); // four are not too long, but unknown
}

TEST(Vt100Keymap, EscapeStartsASequenceInTheMiddleOfAnotherOne)
{
    EXPECT_THAT(keysOf("\033\033[A"), ElementsAre(0x1000));
    EXPECT_THAT(keysOf("\033[\033[B"), ElementsAre(0x1001));
    EXPECT_THAT(keysOf("\033[12\033OC"), ElementsAre(0x1002));
    EXPECT_THAT(keysOf("\033\033\033\033\033\033[D"), ElementsAre(0x1003));
}

TEST(Vt100Keymap, ClearForgetsAnOpenSequence)
{
    vt100_keymap map = {};
    keysOf("\033[", &map);
    vt100_keymap_clear(&map);
    EXPECT_THAT(keysOf("A", &map), ElementsAre('A'));
}

class Vt100Str : public testing::Test {
protected:
    vt100_str line = {};
    std::string sent;

    void SetUp() override { make(64); }
    void TearDown() override { vt100_str_fini(&line); }
    void make(size_t size)
    {
        vt100_str_fini(&line);
        ASSERT_EQ(vt100_str_init(
                      &line, size,
                      [](void* data, const char* text) { *static_cast<std::string*>(data) += text; }, &sent),
                  0);
    }
    // Puts the keys and returns what they sent.
    std::string put(const std::vector<int>& keys)
    {
        sent.clear();
        for (int key : keys) {
            vt100_str_put(&line, key);
        }
        return sent;
    }
    std::string put(int key) { return put(std::vector<int>{key}); }
    std::string putText(const char* text)
    {
        sent.clear();
        vt100_str_put_str(&line, text);
        return sent;
    }
    std::string text() { return vt100_str_get(&line); }
};

TEST_F(Vt100Str, BeginsEmpty)
{
    EXPECT_EQ(text(), "");
    EXPECT_EQ(vt100_str_len(&line), 0u);
    EXPECT_FALSE(vt100_str_eof(&line));
    EXPECT_EQ(sent, "");
}

TEST_F(Vt100Str, CharactersAtTheEndAreEchoedPlainly)
{
    EXPECT_EQ(putText("help me"), "help me");
    EXPECT_EQ(text(), "help me");
    EXPECT_EQ(vt100_str_len(&line), 7u);
}

TEST_F(Vt100Str, LeftAndRightMoveWithinTheLine)
{
    putText("ab");
    EXPECT_EQ(put(VT100_KEY_RIGHT), "");
    EXPECT_EQ(put(VT100_KEY_LEFT), "\033[D");
    EXPECT_EQ(put(VT100_KEY_LEFT), "\033[D");
    EXPECT_EQ(put(VT100_KEY_LEFT), "");
    EXPECT_EQ(put(VT100_KEY_RIGHT), "\033[C");
    EXPECT_EQ(put(VT100_KEY_RIGHT), "\033[C");
    EXPECT_EQ(put(VT100_KEY_RIGHT), "");
    EXPECT_EQ(text(), "ab");
}

TEST_F(Vt100Str, CharacterInTheMiddleStandsBetweenInsertModeSequences)
{
    putText("ac");
    put(VT100_KEY_LEFT);
    EXPECT_EQ(put('b'), "\033[4hb\033[4l");
    EXPECT_EQ(text(), "abc");
    EXPECT_EQ(put('%'), "\033[4h%\033[4l");
    EXPECT_EQ(text(), "ab%c");
}

TEST_F(Vt100Str, BackspaceAndDeleteRemoveTheCharacterBeforeTheCursor)
{
    putText("abcd");
    EXPECT_EQ(put(8), "\033[D\033[1P");
    EXPECT_EQ(text(), "abc");
    put(VT100_KEY_LEFT);
    EXPECT_EQ(put(127), "\033[D\033[1P");
    EXPECT_EQ(text(), "ac");
    EXPECT_EQ(put({8, 8}), "\033[D\033[1P"); // only one has something to remove
    EXPECT_EQ(text(), "c");
}

TEST_F(Vt100Str, DeleteKeyRemovesTheCharacterAtTheCursor)
{
    putText("abc");
    EXPECT_EQ(put(VT100_KEY_DELETE), "");
    put({VT100_KEY_LEFT, VT100_KEY_LEFT});
    EXPECT_EQ(put(VT100_KEY_DELETE), "\033[1P");
    EXPECT_EQ(text(), "ac");
    EXPECT_EQ(put('x'), "\033[4hx\033[4l");
    EXPECT_EQ(text(), "axc");
}

TEST_F(Vt100Str, LineFeedAndCarriageReturnSetTheEndOfLineFlag)
{
    putText("x");
    EXPECT_EQ(put('\n'), "");
    EXPECT_TRUE(vt100_str_eof(&line));
    EXPECT_EQ(text(), "x");
    vt100_str_clear(&line);
    EXPECT_FALSE(vt100_str_eof(&line));
    EXPECT_EQ(text(), "");
    EXPECT_EQ(put('\r'), "");
    EXPECT_TRUE(vt100_str_eof(&line));
}

TEST_F(Vt100Str, OtherCodesDoNothing)
{
    putText("x");
    std::vector<int> others = {VT100_KEY_NONE, VT100_KEY_UP, VT100_KEY_DOWN, 0x1005, -2};
    for (int code = 0; code < 256; ++code) {
        bool known = code == 8 || code == 10 || code == 13 || (code >= 32 && code <= 127);
        if (!known) {
            others.push_back(code);
        }
    }
    EXPECT_EQ(put(others), "");
    EXPECT_EQ(text(), "x");
    EXPECT_FALSE(vt100_str_eof(&line));
}

TEST_F(Vt100Str, EveryPrintableCharacterIsTaken)
{
    make(128);
    std::string all;
    for (char character = 32; character < 127; ++character) {
        all += character;
    }
    EXPECT_EQ(putText(all.c_str()), all);
    EXPECT_EQ(text(), all);
}

TEST_F(Vt100Str, FullLineTakesNoMoreAndCanStillBeEdited)
{
    std::string full(63, 'a');
    EXPECT_EQ(putText((full + "bcd").c_str()), full);
    EXPECT_EQ(text(), full);
    put(VT100_KEY_LEFT);
    EXPECT_EQ(put('x'), "");
    put(8);
    EXPECT_EQ(put('x'), "\033[4hx\033[4l");
    EXPECT_EQ(text(), std::string(61, 'a') + "xa");
    put('\n');
    EXPECT_TRUE(vt100_str_eof(&line));
}

TEST_F(Vt100Str, LineWithoutRoomForAnything)
{
    make(1);
    EXPECT_EQ(put({'a', 8, VT100_KEY_DELETE, VT100_KEY_LEFT, VT100_KEY_RIGHT, '\n'}), "");
    EXPECT_EQ(text(), "");
    EXPECT_TRUE(vt100_str_eof(&line));
}

TEST_F(Vt100Str, WipeGoesLeftByTheCursorAndErases)
{
    putText("0123456789ab");
    put({VT100_KEY_LEFT, VT100_KEY_LEFT});
    sent.clear();
    vt100_str_wipe(&line);
    EXPECT_EQ(sent, "\033[10D\033[0K");
    EXPECT_EQ(text(), "");
    sent.clear();
    vt100_str_wipe(&line);
    EXPECT_EQ(sent, "\033[0K"); // terminals would take 0 for 1
}

TEST_F(Vt100Str, EndAndRedraw)
{
    putText("abcd");
    put({VT100_KEY_LEFT, VT100_KEY_LEFT});
    sent.clear();
    vt100_str_redraw(&line);
    EXPECT_EQ(sent, "abcd\033[2D");
    sent.clear();
    vt100_str_end(&line);
    EXPECT_EQ(sent, "\033[C\033[C");
    sent.clear();
    vt100_str_redraw(&line);
    EXPECT_EQ(sent, "abcd");
}

TEST_F(Vt100Str, TerminalShowsTheLineWhateverIsTyped)
{
    std::mt19937 random(1);
    TerminalLine terminal;
    const int keys[] = {'a', 'b', ' ', '%', VT100_KEY_LEFT, VT100_KEY_RIGHT, VT100_KEY_DELETE,
                        8,   127, 0,   200};
    make(16);
    for (int turn = 0; turn < 20000; ++turn) {
        sent.clear();
        if (turn % 97 == 96) {
            vt100_str_wipe(&line);
        } else {
            vt100_str_put(&line, keys[random() % (sizeof(keys) / sizeof(keys[0]))]);
        }
        terminal.write(sent);
        ASSERT_EQ(terminal.text, text());
        ASSERT_EQ(terminal.cursor, line.cursor);
        ASSERT_FALSE(terminal.inserting);
    }
}

TEST(Vt100StrMemory, InitFailsWithoutMemory)
{
    vt100_str line = {};
    vx_calloc = [](size_t, size_t) -> void* { return nullptr; };
    EXPECT_EQ(vt100_str_init(
                  &line, 64, [](void*, const char*) {}, nullptr),
              -1);
    vx_calloc = calloc;
}

} // namespace
