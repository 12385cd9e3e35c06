#include <gmock/gmock.h>

#include "tests/support/Console.hpp"

/// What a phone of those years knew of its users' regions, by its system: the calendar, the day on which a week begins, digits.

namespace {

using testing::ElementsAre;

struct RegionOfOld {
    const char* name;
    const char* language;
    const char* system;
    /// Of Sunday, 2 March 2014.
    const char* calendar;
    const char* weekday;
};

void PrintTo(const RegionOfOld& region, std::ostream* stream)
{
    *stream << region.language << " on " << region.system;
}

class LocaleData : public testing::TestWithParam<RegionOfOld> {};

} // namespace

TEST_P(LocaleData, AreThoseOfTheSystem)
{
    Console console;
    console.options = {"--system", GetParam().system};
    console.environment["LANG"] = console.environment["LC_ALL"] = GetParam().language;
    EXPECT_THAT(linesOf(console, "clock 2014-03-02T12:00:00\n"
                                 "show NSCalendar.currentCalendar.calendarIdentifier\n"
                                 "let formatter send NSDateFormatter alloc\n"
                                 "let formatter send formatter init\n"
                                 "send formatter setDateFormat: e\n"
                                 "send formatter stringFromDate: @NSDate.date\n"),
                ElementsAre(GetParam().calendar, nullptr, GetParam().weekday));
}

INSTANTIATE_TEST_SUITE_P(Of, LocaleData,
                         testing::Values(RegionOfOld{"SaudiArabiaOn7", "ar_SA.UTF-8", "7.1", "gregorian", "١"},
                                         RegionOfOld{"SaudiArabiaOn8", "ar_SA.UTF-8", "8.1", "islamic-umalqura", "١"},
                                         RegionOfOld{"SaudiArabiaByKeyword", "ar_SA.UTF-8@calendar=buddhist", "7.1", "buddhist",
                                                     "١"},
                                         RegionOfOld{"SaudiArabiaInEnglish", "en_SA.UTF-8", "7.0.4", "gregorian", "1"},
                                         RegionOfOld{"Australia", "en_AU.UTF-8", "7.0", "gregorian", "1"},
                                         RegionOfOld{"NewZealand", "en_NZ.UTF-8", "8.4", "gregorian", "1"},
                                         RegionOfOld{"Ireland", "en_IE.UTF-8", "8.1", "gregorian", "1"},
                                         RegionOfOld{"Argentina", "es_AR.UTF-8", "7.1", "gregorian", "1"},
                                         RegionOfOld{"China", "zh_CN.UTF-8", "8.1", "gregorian", "1"},
                                         RegionOfOld{"ChineseOfNoRegion", "zh.UTF-8", "8.1", "gregorian", "1"},
                                         RegionOfOld{"Britain", "en_GB.UTF-8", "8.1", "gregorian", "7"},
                                         RegionOfOld{"Algeria", "ar_DZ.UTF-8", "8.1", "gregorian", "7"},
                                         RegionOfOld{"Emirates", "ar_AE.UTF-8", "8.1", "gregorian", "١"},
                                         RegionOfOld{"EmiratesByKeyword", "ar_AE.UTF-8@numbers=latn", "8.1", "gregorian", "1"},
                                         RegionOfOld{"Jordan", "ar_JO.UTF-8", "7.0.4", "gregorian", "١"},
                                         RegionOfOld{"Syria", "ar_SY.UTF-8", "8.4", "gregorian", "١"},
                                         RegionOfOld{"Bangladesh", "bn_BD.UTF-8", "8.1", "gregorian", "৩"},
                                         RegionOfOld{"YemenOn7", "ar_YE.UTF-8", "7.1", "gregorian", "٢"},
                                         RegionOfOld{"YemenOn8", "ar_YE.UTF-8", "8.1", "gregorian", "١"},
                                         RegionOfOld{"HindiOn7", "hi_IN.UTF-8", "7.1", "gregorian", "1"},
                                         RegionOfOld{"HindiOn8", "hi_IN.UTF-8", "8.1", "gregorian", "१"},
                                         RegionOfOld{"Morocco", "ar_MA.UTF-8", "8.1", "gregorian", "7"},
                                         RegionOfOld{"Iran", "fa_IR.UTF-8", "8.1", "persian", "۲"},
                                         RegionOfOld{"Nepal", "ne_NP.UTF-8", "7.1", "gregorian", "१"},
                                         RegionOfOld{"Burma", "my_MM.UTF-8", "8.1", "gregorian", "၁"},
                                         RegionOfOld{"Afghanistan", "ps_AF.UTF-8@calendar=gregorian", "8.1", "gregorian", "۲"}),
                         [](const auto& info) { return std::string(info.param.name); });
