// Init calls, shell start-up functions, and the lists both stand in.
#include "runtime/initcall.h"
#include "runtime/vx_shell.h"
#include "support/fakeclock.h"
#include "support/outputcapture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> namesOf(const initlist& list)
{
    std::vector<std::string> names;
    list.for_each([](initlist_entry* entry,
                     void* data) { static_cast<std::vector<std::string>*>(data)->push_back(entry->name); },
                  &names);
    return names;
}

// --- the list

TEST(Initlist, EntriesAreAppended)
{
    initlist list(false);
    EXPECT_THAT(namesOf(list), IsEmpty());
    initlist_entry b("b", &list), a("a", &list), c("c", &list);
    EXPECT_THAT(namesOf(list), ElementsAre("b", "a", "c"));
    EXPECT_EQ(list.head, &b);
    EXPECT_EQ(list.tail, &c);
}

TEST(Initlist, SortedListRunsFromHighToLow)
{
    initlist list(true);
    initlist_entry b("b", &list), d("d", &list), a("a", &list), c("c", &list), capital("B", &list);
    EXPECT_THAT(namesOf(list), ElementsAre("d", "c", "b", "a", "B"));
    EXPECT_EQ(list.head, &d);
    EXPECT_EQ(list.tail, &capital);
    initlist_entry again("b", &list);
    EXPECT_EQ(b.next, &again); // before the first that is lower, so behind its equal
    EXPECT_EQ(again.next, &a);
}

TEST(Initlist, SortedInsertionIntoAnyList)
{
    initlist list(false);
    initlist_entry a("a", &list);
    initlist other(false);
    initlist_entry z("z", &other);
    other.remove(&z);
    list.add_sorted(&z);
    EXPECT_THAT(namesOf(list), ElementsAre("z", "a"));
    EXPECT_EQ(list.tail, &a);
}

TEST(Initlist, LookupFindsTheExactName)
{
    initlist list(false);
    initlist_entry one("one", &list), two("two", &list), again("two", &list);
    EXPECT_EQ(list.lookup("one"), &one);
    EXPECT_EQ(list.lookup("two"), &two);
    EXPECT_EQ(list.lookup("Two"), nullptr);
    EXPECT_EQ(list.lookup("tw"), nullptr);
    EXPECT_EQ(list.lookup(""), nullptr);
}

TEST(Initlist, RemoveKeepsHeadAndTail)
{
    initlist list(false), other(false);
    initlist_entry a("a", &list), b("b", &list), c("c", &list), stranger("s", &other);
    list.remove(&stranger);
    EXPECT_THAT(namesOf(list), ElementsAre("a", "b", "c"));
    list.remove(&c);
    EXPECT_EQ(list.tail, &b);
    list.remove(&a);
    EXPECT_EQ(list.head, &b);
    list.add(&c);
    EXPECT_THAT(namesOf(list), ElementsAre("b", "c"));
    list.remove(&b);
    list.remove(&c);
    EXPECT_EQ(list.head, nullptr);
    EXPECT_EQ(list.tail, nullptr);
}

TEST(Initlist, ForEachMayRemoveTheEntry)
{
    initlist list(false);
    initlist_entry a("a", &list), b("b", &list);
    list.for_each([](initlist_entry* entry, void* data) { static_cast<initlist*>(data)->remove(entry); },
                  &list);
    EXPECT_EQ(list.head, nullptr);
}

// --- init calls

std::vector<std::string> ran;
FakeClock* runningClock;

// The entries live to the end of the process, so each test leaves the lists empty instead.
class InitCalls : public testing::Test {
protected:
    FakeClock clock{5000};

    void SetUp() override
    {
        ran.clear();
        runningClock = &clock;
        clearLists();
    }
    void TearDown() override { clearLists(); }
    static void clearLists()
    {
        InitCall::list.head = InitCall::list.tail = nullptr;
        InitCall::runlist.head = InitCall::runlist.tail = nullptr;
    }
    static std::string at(const void* pointer)
    {
        char text[32];
        snprintf(text, sizeof(text), "%p", pointer);
        return text;
    }
};

int good()
{
    ran.push_back("good");
    runningClock->advance(70);
    return 0;
}
int bad()
{
    ran.push_back("bad");
    return -7;
}
int first()
{
    ran.push_back("first");
    return 0;
}

TEST_F(InitCalls, ConstructorAddsToTheListAndClearsTheMeasurements)
{
    InitCall one(good, 3, "one"), two(bad, 1, "two");
    EXPECT_THAT(namesOf(InitCall::list), ElementsAre("one", "two")); // in the order of registration
    EXPECT_THAT(namesOf(InitCall::runlist), IsEmpty());
    EXPECT_EQ(one.priority, 3);
    EXPECT_EQ(one.return_code, 0);
    EXPECT_EQ(one.elapsed_ms, 0u);
    EXPECT_EQ(one.start_ms, 0u);
    EXPECT_EQ(one.memory, 0u);
}

TEST_F(InitCalls, RunMeasures)
{
    InitCall one(good, 0, "one"), two(bad, 0, "two");
    EXPECT_EQ(one.Run(), 0);
    EXPECT_EQ(one.start_ms, 5000u);
    EXPECT_EQ(one.elapsed_ms, 70u);
    EXPECT_EQ(two.Run(), -7);
    EXPECT_EQ(two.return_code, -7);
    EXPECT_EQ(two.start_ms, 5070u);
    EXPECT_EQ(two.elapsed_ms, 0u);
}

TEST_F(InitCalls, RunMeasuresMemory)
{
    static std::vector<char> block;
    InitCall hungry(
        []() {
            block.assign(64 << 20, 1);
            return 0;
        },
        0, "hungry");
    hungry.Run();
    EXPECT_GE(hungry.memory, 32u << 20);
    EXPECT_EQ(hungry.memory % 1024, 0u);
    block = std::vector<char>();
}

TEST_F(InitCalls, CallWithoutAFunction)
{
    InitCall none(nullptr, 0, "none");
    OutputCapture output;
    EXPECT_EQ(none.Run(), -1);
    EXPECT_EQ(output.stop(), "Error no initcall function for " + at(&none) + "\n");
    EXPECT_EQ(none.return_code, -1);
    EXPECT_EQ(none.start_ms, 5000u);
}

TEST_F(InitCalls, RunAllRunsOnePriorityInTheOrderOfTheList)
{
    InitCall a(good, 2, "a"), b(first, 1, "b"), c(first, 2, "c");
    OutputCapture output;
    EXPECT_EQ(InitCall::RunAll(2), 0);
    EXPECT_EQ(output.stop(), "");
    EXPECT_THAT(ran, ElementsAre("good", "first"));
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("a", "c"));
    EXPECT_THAT(namesOf(InitCall::list), ElementsAre("b"));
    EXPECT_EQ(InitCall::RunAll(2), 0); // once only
    EXPECT_EQ(ran.size(), 2u);
}

TEST_F(InitCalls, CallThatReturnsNonZeroIsReportedAndStillMoved)
{
    InitCall a(bad, 0, "a"), b(good, 0, "b");
    OutputCapture output;
    EXPECT_EQ(InitCall::RunAll(0), -1);
    EXPECT_EQ(output.stop(), "error starting " + at(&a) + " a\n");
    EXPECT_THAT(ran, ElementsAre("bad", "good"));
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("a", "b"));
    EXPECT_THAT(namesOf(InitCall::list), IsEmpty());
}

TEST_F(InitCalls, RunAllWithTwoPrioritiesRunsEachFromTheFirstToTheLast)
{
    InitCall d(first, 4, "d"), c(good, 3, "c"), b(bad, 2, "b"), a(first, 1, "a");
    OutputCapture output;
    EXPECT_EQ(vx_initcalls_run(2, 4), -1);
    EXPECT_EQ(output.stop(), "error starting " + at(&b) + " b\n");
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("b", "c", "d"));
    EXPECT_THAT(namesOf(InitCall::list), ElementsAre("a"));
    EXPECT_EQ(InitCall::RunAll(4, 2), 0); // nothing lies between
    EXPECT_EQ(InitCall::RunAll(INT_MIN, INT_MAX), 0);
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("b", "c", "d", "a"));
}

TEST_F(InitCalls, CallMayRegisterAnotherOne)
{
    static InitCall* late;
    InitCall early(
        []() {
            late = new InitCall(first, 1, "late");
            return 0;
        },
        1, "early");
    InitCall::RunAll(1);
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("early", "late"));
    delete late;
}

TEST_F(InitCalls, CallThatRunsItsOwnPriorityDoesNotComeBackToItself)
{
    InitCall again(
        []() {
            ran.push_back("again");
            return InitCall::RunAll(0);
        },
        0, "again");
    InitCall next(first, 0, "next");
    EXPECT_EQ(InitCall::RunAll(0), 0);
    EXPECT_THAT(ran, ElementsAre("again", "first"));
}

TEST_F(InitCalls, RunNamed)
{
    InitCall a(bad, 0, "a"), b(good, 0, "b");
    OutputCapture output;
    EXPECT_EQ(InitCall::RunNamed("a"), -7);
    EXPECT_THAT(namesOf(InitCall::runlist), ElementsAre("a"));
    EXPECT_THAT(namesOf(InitCall::list), ElementsAre("b"));
    EXPECT_EQ(InitCall::RunNamed("a"), -1); // it has run
    EXPECT_EQ(output.stop(), "");
    EXPECT_THAT(ran, ElementsAre("bad"));
}

TEST_F(InitCalls, RunNamedOfAnUnknownNameReturnsMinus1)
{
    InitCall a(good, 0, "a");
    EXPECT_EQ(InitCall::RunNamed("A"), -1);
    EXPECT_EQ(InitCall::RunNamed(""), -1);
    EXPECT_THAT(ran, IsEmpty());
}

TEST_F(InitCalls, Dump)
{
    InitCall waits(good, 5, "waits"), runs(good, 0, "runs"), fails(bad, 0, "fails");
    OutputCapture output;
    InitCall::RunAll(0);
    runs.memory = 3 * 1024 + 1023;
    fails.memory = 0;
    vx_initcalls_dump();
    std::string text = output.stop();
    EXPECT_EQ(text.substr(text.find('\n') + 1),
              "initcall name                            done mem(k) start    ms return code\n"
              "runs                                        1      3  5000    70           0\n"
              "fails                                       1      0  5070     0          -7\n"
              "waits                                       0      0     0     0           0\n");
}

// Static objects of a source are registered before main.
InitCall registeredBeforeMain(first, 9, "static");
const bool foundBeforeMain = InitCall::list.lookup("static") == &registeredBeforeMain;

TEST(InitCallStatic, ListIsReadyBeforeMain)
{
    EXPECT_TRUE(foundBeforeMain);
}

// --- shell start-up

CVXShell* startedShell;

class ShellStartup : public testing::Test {
protected:
    CVXShell shell{"startup"};

    void SetUp() override { ran.clear(); }
    void TearDown() override { shell_startup::list.head = shell_startup::list.tail = nullptr; }
    template <int Number, int Result> static int function(CVXShell* started)
    {
        startedShell = started;
        ran.push_back(std::to_string(Number));
        return Result;
    }
};

TEST_F(ShellStartup, RunsByPriorityThenInTheOrderOfTheList)
{
    shell_startup c(function<3, 0>, 3, "c"), a(function<10, 1>, 1, "a"), z(function<0, 1>, 0, "z"),
        b(function<2, 0>, 2, "b"), a2(function<11, 0>, 1, "a2");
    shell_startup::run_all(&shell);
    EXPECT_THAT(ran, ElementsAre("0", "10", "11", "2", "3"));
    EXPECT_EQ(startedShell, &shell);
}

TEST_F(ShellStartup, NegativeResultStopsPriority0AndTheOthersGoOn)
{
    shell_startup a(function<1, 5>, 0, "a"), b(function<2, -1>, 0, "b"), c(function<3, 0>, 0, "c"),
        d(function<4, -1>, 1, "d"), e(function<5, 0>, 1, "e");
    shell_startup::run_all(&shell);
    EXPECT_THAT(ran, ElementsAre("1", "2", "4", "5"));
}

TEST_F(ShellStartup, EntriesOfOtherPrioritiesAreNotRun)
{
    shell_startup a(function<1, 0>, 4, "a"), b(function<2, 0>, -1, "b");
    shell_startup::run_all(&shell);
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_EQ(shell_startup::list.lookup("b"), &b);
}

} // namespace
