#include <gmock/gmock.h>

#include "platform/Foundation/NSDictionary.hpp"
#include "simulator/foundation/system_log.hpp"
#include "tests/support/Phone.hpp"

/// Preferences files of every form, as anybody may have written them: what is no property list, or more than a phone has
/// room for, is none, and never the end of SpringBoard.

namespace {

using testing::IsEmpty;

class PropertyLists : public TestOn<Phone> {
protected:
    static NSDictionary* settings() { return exportedVariable<NSDictionary>("settingsDictionary"); }

    void load(std::string_view contents)
    {
        phone.tree().writePreferences(contents);
        phone.inject();
    }

    void expectNone()
    {
        EXPECT_EQ(settings(), nullptr);
        EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Pal.");
        EXPECT_THAT(simulator::takeSystemLog(), IsEmpty());
    }

    void expectName(const std::string& name) { EXPECT_EQ(textOf(exportedVariable("userName")), name); }
};

std::string repeated(std::string_view text, std::size_t times)
{
    std::string all;
    all.reserve(text.size() * times);
    while (times-- > 0)
        all += text;
    return all;
}

std::string xml(const std::string& root)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + root + "</plist>";
}

/// A binary list of objects that are given as they stand in the file; two bytes hold an object's place and its number.
std::string binary(const std::vector<std::string>& objects)
{
    const auto twoBytes = [](std::size_t number) {
        return std::string{static_cast<char>(number >> 8), static_cast<char>(number)};
    };
    std::string file = "bplist00";
    std::string places;
    for (const std::string& object : objects) {
        places += twoBytes(file.size());
        file += object;
    }
    const std::size_t table = file.size();
    const auto eightBytes = [&](std::size_t number) { return std::string(6, '\0') + twoBytes(number); };
    return file + places + std::string(6, '\0') + "\2\2" + eightBytes(objects.size()) + eightBytes(0) + eightBytes(table);
}

/// The number of an object as containers hold it.
std::string reference(std::size_t number)
{
    return {static_cast<char>(number >> 8), static_cast<char>(number)};
}

/// {Name: object 2}
std::string dictionaryWithName()
{
    return "\xd1" + reference(1) + reference(2);
}

const std::string nameKey = "\x54Name";

} // namespace

TEST_F(PropertyLists, AreNoneWhenAStringClaimsMoreThanTheFileHolds)
{
    const std::string claims("\x5f\x13\x40\0\0\0\0\0\0\0", 10);
    load(binary({dictionaryWithName(), nameKey, claims}));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenTheirTableClaimsMoreThanTheFileHolds)
{
    std::string file = binary({dictionaryWithName(), nameKey,
                               "\x53"
                               "Ana"});
    file[file.size() - 24] = '\x40';
    load(file);
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenAnArrayHoldsItself)
{
    load(binary({dictionaryWithName(), nameKey, "\xa1" + reference(2)}));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenBinaryArraysAreNestedTooDeep)
{
    std::vector<std::string> objects{dictionaryWithName(), nameKey};
    while (objects.size() < 20'000)
        objects.push_back("\xa1" + reference(objects.size() + 1));
    objects.push_back("\x53"
                      "Ana");
    load(binary(objects));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenSharedArraysHaveMoreLeavesThanTheMemory)
{
    std::vector<std::string> objects{dictionaryWithName(), nameKey};
    while (objects.size() < 30) {
        std::string shared = "\xaa";
        for (int i = 0; i < 10; ++i)
            shared += reference(objects.size() + 1);
        objects.push_back(shared);
    }
    objects.push_back("\x53"
                      "Ana");
    load(binary(objects));
    expectNone();
}

TEST_F(PropertyLists, KeepSharedObjectsThatAreFew)
{
    load(binary({dictionaryWithName(), nameKey, "\xa2" + reference(3) + reference(3),
                 "\x53"
                 "Ana"}));
    auto* const name = exportedVariable<NSArray>("userName");
    ASSERT_EQ(name->count(), 2U);
    EXPECT_EQ(textOf(name->objectAtIndex(1)), "Ana");
}

TEST_F(PropertyLists, AreNoneWhenAKeyIsNoText)
{
    load(binary({dictionaryWithName(), std::string("\x10\x07", 2),
                 "\x53"
                 "Ana"}));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenArraysOfXMLAreNestedTooDeep)
{
    load(xml("<dict><key>Name</key>" + repeated("<array>", 100'000) + repeated("</array>", 100'000) + "</dict>"));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenArraysOfTheOldFormAreNestedTooDeep)
{
    load("{ Name = " + repeated("(", 100'000) + repeated(")", 100'000) + "; }");
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenDictionariesAreOpenedAndNeverClosed)
{
    load(repeated("{a=", 100'000));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenTheyAreArchivesOfAnotherMaker)
{
    load(std::string("\1\0GNUstep", 9) + std::string(100, '\xff'));
    expectNone();
}

TEST_F(PropertyLists, ReadEveryKindOfObjectInXML)
{
    load(xml("<!-- all of them --><dict><key>Name</key><array><true/><false></false><integer>-7</integer><integer>0x1F</integer>"
             "<real>2.5</real><string>A &amp; B&#x20;<![CDATA[<C>]]></string><data>\n  U28=\n</data>"
             "<date>2014-03-05T08:30:00Z</date><dict/><array/><string/></array></dict>"));
    expectName("(1, 0, \"-7\", 31, \"2.5\", \"A & B <C>\", <536f>, \"2014-03-05 08:30:00 +0000\", {}, (), \"\")");
}

TEST_F(PropertyLists, ReadEveryKindOfObjectInBinary)
{
    load(binary({dictionaryWithName(), nameKey,
                 "\xa7" + reference(3) + reference(4) + reference(5) + reference(6) + reference(7) + reference(8) + reference(9),
                 "\x09", std::string("\x13\xff\xff\xff\xff\xff\xff\xff\xf9", 9), std::string("\x22\x40\x20\0\0", 5),
                 std::string("\x61\0\xe9", 3), "\x42So", std::string("\x33\x41\xb8\xd9\x0e\x42\x80\0\0", 9), "\xd0"}));
    EXPECT_NE(settings(), nullptr);
    auto* const name = exportedVariable<NSArray>("userName");
    ASSERT_EQ(name->count(), 7U);
    EXPECT_EQ(textOf(name->objectAtIndex(1)), "-7");
    EXPECT_EQ(textOf(name->objectAtIndex(2)), "2.5");
    EXPECT_EQ(textOf(name->objectAtIndex(3)), "é");
    EXPECT_EQ(textOf(name->objectAtIndex(4)), "<536f>");
}

TEST_F(PropertyLists, ReadEveryKindOfObjectInTheOldForm)
{
    load("// as people write them\n{ Name = ( Ana-1, \"two \\\"words\\\"\\n\", 'it', <53 6f>, /* none */ {}, (), \"\\U00e9\", ); "
         "}");
    auto* const name = exportedVariable<NSArray>("userName");
    ASSERT_EQ(name->count(), 7U);
    EXPECT_EQ(textOf(name->objectAtIndex(0)), "Ana-1");
    EXPECT_EQ(textOf(name->objectAtIndex(1)), "two \"words\"\n");
    EXPECT_EQ(textOf(name->objectAtIndex(3)), "<536f>");
    EXPECT_EQ(textOf(name->objectAtIndex(6)), "é");
}

TEST_F(PropertyLists, TellTheNearestDateThatThereIs)
{
    load(
        binary({dictionaryWithName(), nameKey, "\xa2" + reference(3) + reference(4),
                std::string("\x33\xff\xe1\xcc\xf3\x85\xeb\xc8\xa0", 9), std::string("\x33\x7f\xe1\xcc\xf3\x85\xeb\xc8\xa0", 9)}));
    auto* const name = exportedVariable<NSArray>("userName");
    ASSERT_EQ(name->count(), 2U);
    constexpr bool narrow = sizeof(void*) == 4; // GNUstep's dates end with its distant past and future there
    EXPECT_EQ(textOf(name->objectAtIndex(0)), narrow ? "0001-01-02 00:00:00 +0000" : "0001-01-01 00:00:00 +0000");
    EXPECT_EQ(textOf(name->objectAtIndex(1)), narrow ? "4001-01-02 00:00:00 +0000" : "9999-12-31 23:59:59 +0000");
}

TEST_F(PropertyLists, ReadOtherEncodings)
{
    load("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist><dict><key>Name</key><string>Luc\xed"
         "a</string></dict></plist>");
    expectName("Lucía");
}

TEST_F(PropertyLists, AreNoneWhenTheirTextIsNotOfTheirEncoding)
{
    load(xml("<dict><key>Name</key><string>Luc\xed"
             "a</string></dict>"));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWithAnEntityThatNobodyDefined)
{
    load(xml("<dict><key>Name</key><string>&ana;</string></dict>"));
    expectNone();
}

TEST_F(PropertyLists, AreNoneWhenSomethingFollowsThem)
{
    load("{ Name = Ana; } and more");
    expectNone();
}
