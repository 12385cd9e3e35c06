#include <cstring>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSDictionary.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/runtime/Encoding.hpp"
#include "platform/runtime/objc.hpp"
#include "simulator/foundation/system_log.hpp"
#include "simulator/loader/Image.hpp"
#include "tests/support/Phone.hpp"
#include "tests/support/programs.hpp"

/// Libraries in the phone's own form, injected from the phone's file tree.

namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

const fs::path phoneLibrary = fs::path(FIXTURE_FOLDER) / "phone_library.dylib";
const fs::path libraryWithAMissingSymbol = fs::path(FIXTURE_FOLDER) / "phone_library_with_a_missing_symbol.dylib";

fs::path install(const Phone& phone, const fs::path& library)
{
    return phone.tree().addLibrary(library, "Another.dylib");
}

class PhoneLibrary : public testing::Test {
protected:
    PhoneLibrary()
    {
        install(phone_, phoneLibrary);
        phone_.inject();
    }

private:
    Phone phone_;
};

/// What the injection of that file says on standard error.
std::string complaintAbout(const std::string& contents)
{
    Phone phone;
    writeFile(install(phone, phoneLibrary), contents);
    testing::internal::CaptureStderr();
    phone.inject();
    std::string complaint = testing::internal::GetCapturedStderr();
    EXPECT_EQ(objc_getClass("SmallArguments"), nullptr);
    // The other libraries are there all the same.
    EXPECT_EQ(textOf(exportedVariable("morningString")), "Good morning, Pal.");
    return complaint;
}

std::uint32_t numberAt(const std::string& contents, std::size_t offset)
{
    std::uint32_t number = 0;
    std::memcpy(&number, contents.data() + offset, sizeof number);
    return number;
}

void setNumberAt(std::string& contents, std::size_t offset, std::uint32_t number)
{
    std::memcpy(contents.data() + offset, &number, sizeof number);
}

/// The place of the first load command of that kind.
std::size_t loadCommand(const std::string& contents, std::uint32_t kind)
{
    std::size_t offset = sizeof(void*) == 8 ? 32 : 28;
    while (numberAt(contents, offset) != kind)
        offset += numberAt(contents, offset + 4);
    return offset;
}

/// The place of the first section of that name: its address, its size and where it stands in the file follow 32 bytes of names.
std::size_t sectionNamed(const std::string& contents, std::string_view name)
{
    return contents.find(std::string(name) + std::string(16 - name.size(), '\0') + "__");
}

std::uint32_t fileOffsetOf(const std::string& contents, std::string_view section)
{
    return numberAt(contents, sectionNamed(contents, section) + 32 + 2 * sizeof(void*));
}

/// What the injection of that file says when the file is signed again.
std::string complaintAboutResigned(const std::string& contents)
{
    const TemporaryFolder folder;
    const fs::path file = folder.path() / "changed.dylib";
    writeFile(file, contents);
    EXPECT_EQ(runProgram({pythonProgram(), RESIGN_PROGRAM, PACKAGING_TOOLS, file, "phone_library"}).status, 0);
    return complaintAbout(readFile(file));
}

/// For several processors: a slice for an unknown one, then the library.
std::string fatFile(const std::string& library, std::uint32_t cpuType)
{
    constexpr std::size_t page = 0x4000;
    std::string fat(page, '\0');
    const std::uint32_t fields[] = {
        0xcafebabe, 2, 7, 3, page, page, 14, cpuType, 0, 2 * page, static_cast<std::uint32_t>(library.size()), 14};
    for (std::size_t i = 0; i < std::size(fields); ++i)
        setNumberAt(fat, i * sizeof(std::uint32_t), __builtin_bswap32(fields[i]));
    return fat + std::string(page, '?') + library;
}

/// Keeps this process from using more memory than it does, but for what a few small objects take.
class NoMemoryLeft {
public:
    NoMemoryLeft()
    {
        ::getrlimit(RLIMIT_AS, &before_);
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        constexpr rlim_t smallObjects = rlim_t{256} << 20;
        const rlimit limit{pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + smallObjects, before_.rlim_max};
        ::setrlimit(RLIMIT_AS, &limit);
    }
    NoMemoryLeft(const NoMemoryLeft&) = delete;
    NoMemoryLeft& operator=(const NoMemoryLeft&) = delete;
    ~NoMemoryLeft() { ::setrlimit(RLIMIT_AS, &before_); }

private:
    rlimit before_{};
};

auto openDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

#if defined(__arm__)
/// Here functions extend small results, as they do on the phone.
constexpr std::int64_t litterInResults = 0;
#else
/// What this machine's functions may leave above a small result.
constexpr std::int64_t litterInResults = 0x7a7a7a7a5a5a0000;
#endif

/// A small number as it may come, with litter above it.
template <std::int64_t Litter, class T>
long littered(T value)
{
    if constexpr (Litter == 0)
        return value;
    else if constexpr (sizeof value == 1)
        return Litter | 0x5a00 | static_cast<unsigned char>(value);
    else
        return Litter | static_cast<unsigned short>(value);
}

template <auto Result>
void addMethod(Class cls, const char* selector)
{
    class_addMethod(cls, sel_registerName(selector),
                    reinterpret_cast<IMP>(+[](id, SEL) { return littered<litterInResults>(Result); }),
                    methodEncoding<decltype(Result)>.text);
}

Class smallResults()
{
    static Class cls = nullptr;
    if (cls == nullptr) {
        cls = objc_allocateClassPair(objc_getClass("NSObject"), "SmallResults", 0);
        addMethod<static_cast<signed char>(-128)>(cls, "signedByte");
        addMethod<static_cast<unsigned char>(128)>(cls, "unsignedByte");
        addMethod<static_cast<short>(-32767)>(cls, "signedHalf");
        addMethod<static_cast<unsigned short>(32769)>(cls, "unsignedHalf");
        addMethod<true>(cls, "truth");
        class_addMethod(cls, sel_registerName("rectangle"),
                        reinterpret_cast<IMP>(+[](id, SEL) { return CGRect::make(1.5, 2.5, 3.5, 4.5); }),
                        methodEncoding<CGRect>.text);
        objc_registerClassPair(cls);
    }
    return cls;
}

int resultOf(const std::string& function)
{
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(smallResults()));
    return exportedFunction<int(NSObject*)>(function)(object.get());
}

#if defined(__aarch64__)
/// What this machine's callers may leave above a small argument.
constexpr std::int64_t litterInArguments = 0x5a5a5a5a5a5a0000;
#else
/// Here callers extend small arguments, as they do on the phone.
constexpr std::int64_t litterInArguments = 0;
#endif

template <class T>
long asArgument(T value)
{
    return littered<litterInArguments>(value);
}

using CallBack = int(void (*)(int), int, int&);

volatile long digits[] = {1, 2, 3, 4, 5};

/// Optimised, so that what it holds across the call lies in the registers that a function has to leave as they were.
[[gnu::noinline, gnu::optimize("O2")]] long sumHeldInRegisters(CallBack* callBack)
{
    const long ones = digits[0];
    const long tens = digits[1];
    const long hundreds = digits[2];
    const long thousands = digits[3];
    const long tenThousands = digits[4];
    int cleanUps = 0;
    int caught = 0;
    try {
        callBack(+[](int) { throw 5; }, 3, cleanUps);
    } catch (int thrown) {
        caught = thrown;
    }
    return ones + 10 * tens + 100 * hundreds + 1000 * thousands + 10000 * tenThousands + caught;
}

} // namespace

// Loading

TEST_F(PhoneLibrary, RunsItsInitialisers)
{
    EXPECT_NE(objc_getClass("SmallArguments"), nullptr);
}

TEST_F(PhoneLibrary, IsTheHomeOfItsFunctions)
{
    EXPECT_EQ(simulator::fileOf(exported("truthOf")).filename(), "Another.dylib");
    const Method method =
        class_getInstanceMethod(objc_getClass("SmallArguments"), sel_registerName("truth:byte:letter:half:character:"));
    EXPECT_EQ(simulator::fileOf(reinterpret_cast<const void*>(method_getImplementation(method))).filename(), "Another.dylib");
}

TEST_F(PhoneLibrary, HasItsSelectorsWhenItIsLoaded)
{
    EXPECT_EQ(exportedFunction<SEL()>("selectorOfTheFixture")(), sel_registerName("selectorOfTheFixture:and:"));
}

TEST_F(PhoneLibrary, HasConstantTextsThatAreTextsLikeOthers)
{
    for (const auto& [name, text, length] : {std::tuple("plainText", "a plain text", NSUInteger{12}),
                                             std::tuple("textBeyondASCII", "8\u00B0 \u20AC\U0001F600", NSUInteger{6})}) {
        NSString* const constant = exportedFunction<NSString*()>(name)();
        NSString* const other = NSString::stringWithUTF8String(text);
        EXPECT_TRUE(constant->isKindOfClass(classNamed<"NSString">()));
        EXPECT_STREQ(constant->UTF8String(), text);
        EXPECT_EQ(constant->length(), length);
        EXPECT_EQ(constant->characterAtIndex(length - 1), other->characterAtIndex(length - 1));
        EXPECT_TRUE(constant->isEqualToString(other));
        EXPECT_TRUE(other->isEqualToString(constant));
        EXPECT_EQ((send<"hash", NSUInteger>(constant)), (send<"hash", NSUInteger>(other)));
        EXPECT_EQ(textOf(NSString::stringWithFormat(constantString<"<%@>">(), constant)), std::string("<") + text + ">");
        NSDictionary* const byOther =
            send<"dictionaryWithObject:forKey:", NSDictionary*>(classNamed<"NSDictionary">(), other, other);
        EXPECT_EQ(byOther->objectForKeyedSubscript(constant), other);
    }
}

TEST_F(PhoneLibrary, KeepsItsConstantTextsWhateverIsDoneToThem)
{
    NSString* const constant = exportedFunction<NSString*()>("plainText")();
    for (int i = 0; i < 3; ++i)
        objc_release(constant);
    EXPECT_EQ(objc_autorelease(objc_retain(constant)), constant);
    EXPECT_EQ((send<"copy", NSString*>(constant)), constant);
    EXPECT_STREQ(constant->UTF8String(), "a plain text");
    EXPECT_ANY_THROW(constant->characterAtIndex(12));
}

TEST(PhoneLibraryFile, IsLoadedOnce)
{
    const Phone phone;
    const fs::path file = install(phone, phoneLibrary);
    EXPECT_EQ(&simulator::openImage(file), &simulator::openImage(file));
}

TEST(PhoneLibraryFile, MayHoldOtherProcessorsToo)
{
    Phone phone;
    const std::string library = readFile(phoneLibrary);
    writeFile(install(phone, phoneLibrary), fatFile(library, numberAt(library, 4)));
    phone.inject();
    EXPECT_NE(objc_getClass("SmallArguments"), nullptr);
}

TEST(PhoneLibraryFile, IsRefusedWithoutASliceForThisProcessor)
{
    EXPECT_THAT(complaintAbout(fatFile(readFile(phoneLibrary), 8)), HasSubstr("not for this machine's processor"));
}

TEST(PhoneLibraryFile, IsRefusedForAnotherProcessor)
{
    std::string library = readFile(phoneLibrary);
    setNumberAt(library, 4, 8);
    EXPECT_THAT(complaintAbout(library), HasSubstr("not for this machine's processor"));
}

TEST(PhoneLibraryFile, IsRefusedWithoutACodeSignature)
{
    std::string library = readFile(phoneLibrary);
    constexpr std::uint32_t codeSignature = 0x1d;
    constexpr std::uint32_t sourceVersion = 0x2a;
    setNumberAt(library, loadCommand(library, codeSignature), sourceVersion);
    EXPECT_THAT(complaintAbout(library), AllOf(HasSubstr("Another.dylib was not injected"), HasSubstr("no code signature")));
}

TEST(PhoneLibraryFile, IsRefusedWhenAPageWasChanged)
{
    std::string library = readFile(phoneLibrary);
    library[0x1008] ^= 1;
    EXPECT_THAT(complaintAbout(library), HasSubstr("page 1 does not have the hash"));
}

TEST(PhoneLibraryFile, IsRefusedWhenAnythingInItsSignatureWasChanged)
{
    const Phone phone;
    const fs::path file = install(phone, phoneLibrary);
    const std::string library = readFile(phoneLibrary);
    constexpr std::uint32_t codeSignature = 0x1d;
    const std::size_t signature = numberAt(library, loadCommand(library, codeSignature) + 8);
    // Nobody can vouch for the name by which its maker calls it.
    const std::size_t name = library.find("org.solvane.phone_library", signature);
    const std::size_t nameEnd = library.find('\0', name);
    for (std::size_t at = signature; at < library.size(); at += at + 1 == name ? nameEnd - at : 1) {
        std::string changed = library;
        changed[at] = static_cast<char>(changed[at] ^ 1 << at % 8);
        writeFile(file, changed);
        EXPECT_THROW(simulator::openImage(file), std::runtime_error) << "byte " << at;
    }
}

TEST(PhoneLibraryFile, IsRefusedWhenAnInitialiserIsNotInItsCode)
{
    const std::string library = readFile(phoneLibrary);
    std::string changed = library;
    setNumberAt(changed, fileOffsetOf(library, "__mod_init_func"), 0x10);
    EXPECT_THAT(complaintAboutResigned(changed), HasSubstr("an initialiser is not in its code"));
}

TEST(PhoneLibraryFile, IsRefusedWhenAPointerPointsOutsideOfIt)
{
    std::string library = readFile(phoneLibrary);
    setNumberAt(library, fileOffsetOf(library, "__mod_init_func"), 0x7ffffff0);
    EXPECT_THAT(complaintAboutResigned(library), HasSubstr("a pointer points outside of its segments"));
}

TEST(PhoneLibraryFile, IsRefusedWhenTheNameOfASelectorHasNoEnd)
{
    std::string library = readFile(phoneLibrary);
    const std::size_t lastSegment = library.find("__LINKEDIT") + 16;
    const std::uint32_t end = numberAt(library, lastSegment) + numberAt(library, lastSegment + sizeof(void*));
    setNumberAt(library, fileOffsetOf(library, "__objc_selrefs"), end);
    EXPECT_THAT(complaintAboutResigned(library), HasSubstr("a text is not in its segments"));
}

TEST(PhoneLibraryFile, IsRefusedWhenItsInitialisersLieOutsideOfIt)
{
    std::string library = readFile(phoneLibrary);
    setNumberAt(library, sectionNamed(library, "__mod_init_func") + 32, 0x7ffffff0);
    EXPECT_THAT(complaintAboutResigned(library), HasSubstr("a pointer lies outside of its segments"));
}

TEST(PhoneLibraryFile, IsRefusedWhenItWritesIntoItsCode)
{
    std::string library = readFile(phoneLibrary);
    constexpr std::uint32_t dyldInfoOnly = 0x80000022;
    const std::size_t rebases = numberAt(library, loadCommand(library, dyldInfoOnly) + 8);
    constexpr char setSegment = 0x20;
    const std::size_t instruction = library.find_first_of("\x21\x22\x23", rebases);
    library[instruction] = setSegment;
    EXPECT_THAT(complaintAboutResigned(library), HasSubstr("a pointer lies outside of its segments"));
}

TEST(PhoneLibraryFile, IsRefusedWhenItIsAPipe)
{
    const Phone phone;
    const fs::path file = install(phone, phoneLibrary);
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_THROW(simulator::openImage(file), std::runtime_error);
}

TEST(PhoneLibraryFile, IsRefusedWhenItIsCutOffAnywhere)
{
    const Phone phone;
    const fs::path file = install(phone, phoneLibrary);
    const std::string library = readFile(phoneLibrary);
    for (std::size_t length = 4; length < library.size(); length += length < 4096 ? 3 : 997) {
        writeFile(file, library.substr(0, length));
        EXPECT_THROW(simulator::openImage(file), std::runtime_error) << length << " bytes";
    }
}

TEST(PhoneLibraryFile, IsRefusedWhenASymbolIsMissing)
{
    EXPECT_THAT(complaintAbout(readFile(libraryWithAMissingSymbol)),
                HasSubstr("the symbol _functionThatNoPhoneHas is missing in /usr/lib/libNoSuchLibrary.dylib"));
}

TEST(PhoneLibraryFile, IsNamedInTheReasonToRefuseIt)
{
    const Phone phone;
    const fs::path file = fs::canonical(install(phone, phoneLibrary));
    std::string unsuitable = readFile(phoneLibrary);
    setNumberAt(unsuitable, 4, 8);
    std::string changed = readFile(phoneLibrary);
    changed[0x1008] ^= 1;
    for (const std::string& contents :
         {unsuitable, changed, changed.substr(0, 100), readFile(libraryWithAMissingSymbol), std::string("rubbish")}) {
        writeFile(file, contents);
        EXPECT_THAT([&] { simulator::openImage(file); }, ThrowsMessage<std::runtime_error>(StartsWith(file.native() + ": ")));
    }
}

TEST(PhoneLibraryFile, IsClosedWhenThereIsNoMemoryForIt)
{
    constexpr std::uintmax_t damaged = 4096;
    constexpr std::uintmax_t huge = std::uintmax_t{1} << 30;
    const Phone phone;
    const fs::path file = install(phone, phoneLibrary);
    fs::resize_file(file, damaged);
    fs::resize_file(file, huge);
    const auto before = openDescriptors();
    {
        const NoMemoryLeft none;
        EXPECT_THROW(simulator::openImage(file), std::runtime_error);
    }
    EXPECT_EQ(openDescriptors(), before);
}

// Calling

TEST_F(PhoneLibrary, GetsSmallResultsExtended)
{
    EXPECT_EQ(resultOf("signedByteOf"), -128);
    EXPECT_EQ(resultOf("unsignedByteOf"), 128);
    EXPECT_EQ(resultOf("signedHalfOf"), -32767);
    EXPECT_EQ(resultOf("unsignedHalfOf"), 32769);
    EXPECT_EQ(resultOf("truthOf"), 1);
}

TEST_F(PhoneLibrary, GetsSmallResultsOfSuperExtended)
{
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(smallResults()));
    EXPECT_EQ(exportedFunction<int(NSObject*, Class)>("signedByteOfSuper")(object.get(), smallResults()), -128);
}

TEST_F(PhoneLibrary, GetsZeroFromNil)
{
    EXPECT_EQ(exportedFunction<int(NSObject*)>("signedByteOf")(nullptr), 0);
    EXPECT_EQ(exportedFunction<CGRect(NSObject*)>("rectangleOf")(nullptr), CGRectZero);
}

TEST_F(PhoneLibrary, GetsStructures)
{
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(smallResults()));
    EXPECT_EQ(exportedFunction<CGRect(NSObject*)>("rectangleOf")(object.get()), CGRect::make(1.5, 2.5, 3.5, 4.5));
}

TEST_F(PhoneLibrary, GetsSmallArgumentsExtended)
{
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(objc_getClass("SmallArguments")));
    const SEL selector = sel_registerName("truth:byte:letter:half:character:");
    const auto take = reinterpret_cast<long long (*)(id, SEL, long, long, long, long, long)>(
        method_getImplementation(class_getInstanceMethod(objc_getClass("SmallArguments"), selector)));
    EXPECT_EQ(take(object.get(), selector, asArgument(true), asArgument<signed char>(-100), asArgument<unsigned char>(200),
                   asArgument<short>(-30000), asArgument<unsigned short>(60000)),
              (((1LL * 1000 - 100) * 1000 + 200) * 100000 - 30000) * 100000 + 60000);
}

TEST_F(PhoneLibrary, GetsSmallArgumentsOfAHookExtended)
{
    const Class cls = objc_allocateClassPair(objc_getClass("NSObject"), "Truthful", 0);
    const SEL selector = sel_registerName("setTruth:");
    class_addMethod(cls, selector, reinterpret_cast<IMP>(+[](id, SEL, long) {}), "v@:B");
    objc_registerClassPair(cls);
    exportedFunction<void(Class)>("hookTruthOf")(cls);
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(cls));
    reinterpret_cast<void (*)(id, SEL, long)>(class_getMethodImplementation(cls, selector))(object.get(), selector,
                                                                                            asArgument(true));
    EXPECT_EQ(exportedFunction<long long()>("hookedTruthValue")(), 1);
}

TEST_F(PhoneLibrary, FormatsManyArguments)
{
    EXPECT_EQ(textOf(exportedFunction<NSString*()>("manyArguments")()), "-1 two 3.25 4 five 6.5 7 8 9 10 11 12.125 end");
}

TEST_F(PhoneLibrary, LogsManyArguments)
{
    simulator::takeSystemLog();
    exportedFunction<int()>("logMuch")();
    EXPECT_THAT(simulator::takeSystemLog(), ElementsAre("1 2.5 three 4 5 6 7 8 9 10.5"));
}

// Exceptions

TEST_F(PhoneLibrary, LetsAnExceptionThroughAndCleansUp)
{
    const auto callBack = exportedFunction<CallBack>("callBack");
    int cleanUps = 0;
    EXPECT_THROW(callBack(+[](int) { throw std::runtime_error("out of the depth"); }, 3, cleanUps), std::runtime_error);
    EXPECT_EQ(cleanUps, 4);
}

TEST_F(PhoneLibrary, LeavesItsCallersRegistersAsTheyWere)
{
    EXPECT_EQ(sumHeldInRegisters(exportedFunction<CallBack>("callBack")), 54321 + 5);
}

TEST_F(PhoneLibrary, LetsAnExceptionOfTheRuntimeThrough)
{
    const auto arguments = exportedFunction<NSString*(const char*, const double&)>("arguments");
    EXPECT_EQ(textOf(arguments("%.1f", 2.5)), "2.5");
    const Owned<NSObject> object = adopt(send<"new", NSObject*>(objc_getClass("NSObject")));
    // An object that does not know the message raises.
    EXPECT_ANY_THROW(exportedFunction<int(NSObject*)>("signedByteOf")(object.get()));
}
