// One line of a VT100 terminal, as far as the line editor uses it: it obeys the sequences that the editor is
// known to send, and anything else makes it fail the test.
#ifndef TESTS_SUPPORT_TERMINALLINE_H
#define TESTS_SUPPORT_TERMINALLINE_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

class TerminalLine {
public:
    std::string text;  // of the line that the cursor is in
    size_t cursor = 0; // column
    bool inserting = false;

    void write(const std::string& bytes)
    {
        for (size_t at = 0; at < bytes.size(); ++at) {
            if (bytes[at] == '\033') {
                size_t end = bytes.find_first_of("CDKPhl", at);
                ASSERT_NE(end, std::string::npos) << "a sequence without an end: " << bytes.substr(at + 1);
                ASSERT_EQ(bytes[at + 1], '[');
                obey(bytes.substr(at + 2, end - at - 2), bytes[end]);
                at = end;
            } else if (bytes[at] == '\n') {
                text.clear();
                cursor = 0;
            } else {
                print(bytes[at]);
            }
        }
    }

private:
    void print(char character)
    {
        ASSERT_TRUE(character >= 0x20 && character < 0x7f) << "printed: " << static_cast<int>(character);
        text.resize(std::max(text.size(), cursor), ' ');
        if (inserting) {
            text.insert(cursor, 1, character);
        } else {
            text.replace(cursor, 1, 1, character);
        }
        ++cursor;
    }
    void obey(const std::string& parameter, char command)
    {
        size_t count = parameter.empty() ? 1 : static_cast<size_t>(atoi(parameter.c_str()));
        switch (command) {
        case 'C':
            ASSERT_EQ(parameter, "");
            ++cursor;
            break;
        case 'D':
            ASSERT_GT(count, 0u) << "terminals take 0 for 1";
            ASSERT_GE(cursor, count) << "left of the line";
            cursor -= count;
            break;
        case 'K':
            ASSERT_EQ(parameter, "0");
            text.resize(std::min(text.size(), cursor));
            break;
        case 'P':
            ASSERT_EQ(parameter, "1");
            ASSERT_LT(cursor, text.size()) << "nothing there to delete";
            text.erase(cursor, 1);
            break;
        default:
            ASSERT_EQ(parameter, "4");
            inserting = command == 'h';
        }
    }
};

#endif
