#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/Console.hpp"

/// Commands that ask for what cannot be: the console reports and goes on, or stops with the line's number, and never ends
/// without a word.

namespace {

using testing::StartsWith;

constexpr const char* array = "let array send NSMutableArray array\n";
constexpr const char* dictionary = "let dictionary send NSMutableDictionary dictionary\n";
constexpr const char* layer = "let layer send CALayer layer\nsend layer setFrame: 0,0,10,10\n";

std::string view(const std::string& name)
{
    return "let " + name + " send UIView alloc\nlet " + name + " send " + name + " initWithFrame: 0,0,10,10\n";
}

/// The run ends at its last line, with its number and that complaint.
void expectRefusal(const std::string& script, const std::string& complaint)
{
    const ConsoleRun run = Console().run(script);
    EXPECT_EQ(run.status, 2);
    const auto lines = std::count(script.begin(), script.end(), '\n') + 1;
    EXPECT_THAT(run.errors, StartsWith("line " + std::to_string(lines) + ": " + complaint));
}

Json lastLineOf(const std::string& script)
{
    const std::vector<Json> lines = linesOf(Console(), script);
    return lines.empty() ? Json(Json::value_t::discarded) : lines.back();
}

} // namespace

TEST(AContainerWithinItself, IsShownByItsClassAlone)
{
    EXPECT_EQ(lastLineOf(std::string(array) + "send array addObject: one\nsend array addObject: @array\nshow array")[1].size(),
              1U);
    EXPECT_EQ(
        lastLineOf(std::string(dictionary) + "send dictionary setObject:forKey: @dictionary key\nshow dictionary")["key"].size(),
        1U);
}

TEST(AContainerWithinItself, IsRefusedWhenItIsToBeDescribed)
{
    expectRefusal(std::string(array) + "send array addObject: @array\nsend array description", "ran out of stack");
}

TEST(SharedContainers, AreRefusedWhenTheyHaveMoreElementsThanCanBeShown)
{
    std::string script = "let a0 send NSMutableArray array\nsend a0 addObject: leaf\n";
    for (int i = 1; i <= 30; ++i) {
        const std::string name = "a" + std::to_string(i);
        const std::string below = "@a" + std::to_string(i - 1);
        script += "let " + name + " send NSMutableArray array\n";
        script += "send " + name + " addObject: " + below + "\nsend " + name + " addObject: " + below + "\n";
    }
    expectRefusal(script + "show a30", "there is more than can be shown");
}

TEST(AViewWithinItself, IsRefused)
{
    const std::string views = view("outer") + view("inner") + "send outer addSubview: @inner\n";
    expectRefusal(views + "send outer addSubview: @outer", "raised NSInvalidArgumentException: ");
    expectRefusal(views + "send inner addSubview: @outer", "raised NSInvalidArgumentException: ");
    expectRefusal(views + "send inner insertSubview:atIndex: @outer 0", "raised NSInvalidArgumentException: ");
    expectRefusal(views + "add outer 0,0\nsend inner addSubview: @window", "raised NSInvalidArgumentException: ");
}

TEST(ALayerWithinItself, IsRefused)
{
    expectRefusal(std::string(layer) + "send layer addSublayer: @layer", "raised CALayerInvalid: ");
    expectRefusal(view("inner") + "add inner 0,0\nsend inner.layer addSublayer: @window.layer", "raised CALayerInvalid: ");
}

TEST(AMaskWithinItself, MasksNothing)
{
    const Console console;
    const std::string file = console.root().parent_path() / "masked.png";
    linesOf(console, "lock\nsend listView.layer setMask: @listView.layer\nscreenshot '" + file + "'\n" + layer +
                         "send layer setMask: @window.layer\nsend listView.layer setMask: @layer\nscreenshot '" + file + "'\n");
}

TEST(AnObjectThatWasOnlyAllocated, IsShown)
{
    for (const char* name : {"UIView", "UILabel", "UIButton", "UIImageView", "UIScrollView", "UITableView", "CALayer", "UIImage",
                             "UIColor", "UIFont", "SVWidget", "SVAppsView", "APLCalendar"}) {
        const std::string allocated = "let some send " + std::string(name) + " alloc\n";
        EXPECT_EQ(lastLineOf(allocated + "show some")["class"], name);
    }
}

TEST(AViewThatWasOnlyAllocated, IsPartOfTheTree)
{
    const Json tree = lastLineOf("lock\nlet some send UILabel alloc\nsend some setText: text\nsend window addSubview: @some\n"
                                 "layout\nscreenshot /dev/null\ntree some");
    EXPECT_EQ(tree["text"], "text");
}

TEST(TheWindow, MayHaveAnySizeWhileThePictureHasTheScreens)
{
    const Console console;
    const std::string file = console.root().parent_path() / "screen.png";
    for (const char* frame : {"0,0,0,0", "0,0,100000,100000", "0,0,-5,-5", "nan,0,nan,1", "0,0,inf,1e30"}) {
        linesOf(console, std::string("lock\nsend window setFrame: ") + frame + "\nlayout\nscreenshot '" + file + "'\n");
        EXPECT_THAT(readFile(file).substr(16, 8), testing::ElementsAre(0, 0, 2, -128, 0, 0, 4, 112));
    }
}

TEST(APicture, IsNoneWhenAPipeStandsInItsPlace)
{
    const Console console;
    ASSERT_EQ(::mkfifo((console.root() / "pipe.png").c_str(), 0600), 0);
    EXPECT_EQ(lineOf(console, "send UIImage imageWithContentsOfFile: /pipe.png"), nullptr);
}

TEST(APicture, IsNoneWhenItClaimsToBeLargerThanAnyScreen)
{
    const Console console;
    const std::string png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x7f\xff\0\0\x7f\xff\x08\x06\0\0\0", 29);
    writeFile(console.root() / "large.png", png);
    EXPECT_EQ(lineOf(console, "send UIImage imageWithContentsOfFile: /large.png"), nullptr);
}

TEST(AMethodOfVariableArguments, IsRefused)
{
    for (const char* message : {"NSString stringWithFormat: %s%n%@", "NSArray arrayWithObjects: one",
                                "NSException raise:format: name %s", "NSMutableDictionary dictionaryWithObjectsAndKeys: a"})
        expectRefusal(std::string("lock\nsend ") + message, "\"");
}

TEST(AnObjectOfTheWrongClass, IsRefused)
{
    const std::string label = "lock\nlet label send UILabel new\n";
    expectRefusal(label + "send label setFont: Helvetica", "argument 1 must be a UIFont, not an object of the class ");
    expectRefusal(label + "send label setTextColor: @window",
                  "argument 1 must be a UIColor, not an object of the class UIWindow");
    expectRefusal(label + "send label addSubview: @label.layer",
                  "argument 1 must be a UIView, not an object of the class CALayer");
    expectRefusal(label + "send label addSubview: @UIView", "argument 1 must be a UIView, not the class UIView");
    expectRefusal(label + "send UIImageView.new setImage: text", "argument 1 must be a UIImage, not an object of the class ");
}
