#include "tests/random_days/happenings.hpp"

#include <algorithm>
#include <iterator>

namespace {

using Which = PhoneModel::Which;

constexpr std::array<const char*, 10> westernDigits{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
constexpr std::array<const char*, 10> arabicDigits{"٠", "١", "٢", "٣", "٤", "٥", "٦", "٧", "٨", "٩"};
constexpr std::array<const char*, 10> devanagariDigits{"०", "१", "२", "३", "४", "५", "६", "७", "८", "९"};

constexpr std::array<const char*, 12> english{"January", "February", "March",     "April",   "May",      "June",
                                              "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char*, 12> german{"Januar", "Februar", "März",      "April",   "Mai",      "Juni",
                                             "Juli",   "August",  "September", "Oktober", "November", "Dezember"};
constexpr std::array<const char*, 12> french{"janvier", "février", "mars",      "avril",   "mai",      "juin",
                                             "juillet", "août",    "septembre", "octobre", "novembre", "décembre"};
constexpr std::array<const char*, 12> portuguese{"janeiro", "fevereiro", "março",    "abril",   "maio",     "junho",
                                                 "julho",   "agosto",    "setembro", "outubro", "novembro", "dezembro"};
constexpr std::array<const char*, 12> swedish{"januari", "februari", "mars",      "april",   "maj",      "juni",
                                              "juli",    "augusti",  "september", "oktober", "november", "december"};
constexpr std::array<const char*, 12> japanese{"1月", "2月", "3月", "4月",  "5月",  "6月",
                                               "7月", "8月", "9月", "10月", "11月", "12月"};
constexpr std::array<const char*, 12> arabic{"يناير", "فبراير", "مارس",   "أبريل",  "مايو",   "يونيو",
                                             "يوليو", "أغسطس",  "سبتمبر", "أكتوبر", "نوفمبر", "ديسمبر"};
constexpr std::array<const char*, 12> marathi{"जानेवारी", "फेब्रुवारी", "मार्च",  "एप्रिल",  "मे",      "जून",
                                              "जुलै",      "ऑगस्ट",    "सप्टेंबर", "ऑक्टोबर", "नोव्हेंबर", "डिसेंबर"};

constexpr int sunday = 0;
constexpr int monday = 1;
constexpr int saturday = 6;

/// Weeks that begin on different days, digits of different scripts, and clocks that are set forward at midnight, by half an
/// hour, or over a whole day.
const Region regions[] = {
    {"en_US.UTF-8", "UTC", sunday, english, westernDigits, true},
    {"en_GB.UTF-8", "Europe/London", monday, english, westernDigits, false},
    {"en_US.UTF-8", "America/New_York", sunday, english, westernDigits, true},
    {"de_DE.UTF-8", "Europe/Berlin", monday, german, westernDigits, false},
    {"fr_FR.UTF-8", "Pacific/Noumea", monday, french, westernDigits, false},
    {"pt_BR.UTF-8", "America/Sao_Paulo", sunday, portuguese, westernDigits, false},
    {"sv_SE.UTF-8", "Europe/Stockholm", monday, swedish, westernDigits, false},
    {"ja_JP.UTF-8", "Asia/Tokyo", sunday, japanese, westernDigits, false},
    {"ar_EG.UTF-8", "Africa/Cairo", saturday, arabic, arabicDigits, false},
    {"mr_IN.UTF-8", "Asia/Kolkata", sunday, marathi, devanagariDigits, false},
    {"en_GB.UTF-8", "Asia/Tehran", monday, english, westernDigits, false},
    {"en_US.UTF-8", "Pacific/Apia", sunday, english, westernDigits, true},
    {"en_GB.UTF-8", "Australia/Lord_Howe", monday, english, westernDigits, false},
    {"en_US.UTF-8", "Asia/Kathmandu", sunday, english, westernDigits, true},
    {"en_GB.UTF-8", "Asia/Beirut", monday, english, westernDigits, false},
};

constexpr Screen screens[] = {{320, 568, 2}, {320, 480, 1}, {375, 667, 2}, {414, 736, 3}, {333, 777, 2}, {768, 1024, 1}};

LocalTime randomTime(Chance& chance)
{
    constexpr LocalTime borders[] = {{2014, 3, 5, 6, 59, 59},  {2014, 3, 5, 7, 0, 0},     {2014, 3, 5, 12, 59, 59},
                                     {2014, 3, 5, 13, 0, 0},   {2014, 3, 5, 17, 59, 59},  {2014, 3, 5, 18, 0, 0},
                                     {2014, 3, 5, 21, 59, 59}, {2014, 3, 5, 22, 0, 0},    {2014, 3, 5, 23, 59, 59},
                                     {2014, 3, 5, 0, 0, 0},    {2016, 2, 29, 12, 0, 0},   {2014, 12, 31, 23, 59, 59},
                                     {2015, 1, 1, 0, 0, 0},    {2014, 10, 31, 12, 30, 0}, {2000, 2, 29, 4, 5, 6}};
    // A 32-bit C library counts no seconds beyond.
    constexpr int firstYear = 1902;
    constexpr int lastYear = 2037;
    LocalTime time{};
    do {
        if (chance.oneIn(3))
            time = chance.oneOf(borders);
        else
            time = {chance.between(firstYear, lastYear),
                    chance.between(1, 12),
                    chance.between(1, 31),
                    chance.between(0, 23),
                    chance.between(0, 59),
                    chance.between(0, 59)};
    } while (!isShown(time));
    return time;
}

std::optional<Weather> randomWeather(Chance& chance)
{
    constexpr const char* temperatures[] = {"21",  "21.4", "-17.5", "20",  "0",    "-0",   "-3",   "37.77", "abc",
                                            "",    "12°",  " 7",    "+5",  ".5",   "5.",   "1,5",  "--3",   "-40",
                                            "100", "1e",   "x9",    "0.3", "-273", "1000", "9999", "16.95"};
    constexpr long long conditions[] = {48,         65536 + 26,      2147483648 + 26,    3200, -1, -26, 4294967296 + 26,
                                        4294967295, -4294967296 + 3, 9223372036854775807};
    if (chance.oneIn(8))
        return std::nullopt;
    std::string temperature = chance.oneOf(temperatures);
    if (chance.oneIn(3))
        temperature = std::to_string(chance.between(-40, 45)) + (chance.oneIn(2) ? "" : '.' + std::to_string(chance.below(100)));
    return Weather{temperature, chance.oneIn(8) ? chance.oneOf(conditions) : chance.between(0, 47)};
}

std::optional<std::string> randomName(Chance& chance)
{
    constexpr const char* names[] = {"Ana",        "Bo",   "Ana María", "",      "%@ %d", "O'Neil",
                                     "say \"hi\"", "a\\b", "<&>",       "李 🙂", " x "};
    if (chance.oneIn(5))
        return std::nullopt;
    return chance.oneOf(names);
}

/// One pool for identifiers of all kinds, so that items of different kinds are of one application.
std::string randomIdentifier(Chance& chance)
{
    constexpr const char* identifiers[] = {
        "com.apple.mobilecal", "com.apple.mobilemail", "com.apple.MobileSMS", "com.apple.Music", "com.apple.mobilephone",
        "org.solvane.ferry",   "org.example.removed",  "noIdentifier",        "Low Battery",     "",
        "Ünïcode 🎈"};
    return chance.oneOf(identifiers);
}

void addItem(PhoneModel& phone, Chance& chance, Item::Kind kind, const char* command)
{
    std::vector<std::string> words{command};
    const bool isUnknown = kind == Item::Kind::unknown;
    const std::string identifier = isUnknown ? "noIdentifier" : randomIdentifier(chance);
    if (!isUnknown)
        words.push_back(identifier);
    if (!isUnknown && chance.oneIn(2))
        words.emplace_back("Are you coming?");
    phone.add({kind, identifier}, words);
}

Which randomCalendar(Chance& chance)
{
    return chance.oneIn(2) ? Which::spare : Which::widgets;
}

/// A place on the screen. No view ends between two whole points but in their middle.
struct Place {
    double x;
    double y;
};

Place randomPlace(Chance& chance, const Screen& screen)
{
    return {chance.between(0, screen.width - 1) + 0.3, chance.between(0, screen.height - 1) + 0.3};
}

void lockThePhone(PhoneModel& phone, Chance&)
{
    phone.lock();
}

/// One row for each thing that happens: how often, and how.
struct Happening {
    std::uint64_t weight;
    void (*happen)(PhoneModel& phone, Chance& chance);
};

const Happening happenings[] = {
    {60, [](PhoneModel& phone, Chance& chance) { phone.setClock(randomTime(chance)); }},
    {50, [](PhoneModel& phone, Chance& chance) { phone.setWeather(randomWeather(chance)); }},
    {20, [](PhoneModel& phone, Chance& chance) { phone.setUnits(chance.oneIn(2)); }},
    {15, [](PhoneModel& phone, Chance& chance) { phone.writeName(randomName(chance)); }},
    {15, [](PhoneModel& phone, Chance&) { phone.reload(); }},
    {1, [](PhoneModel& phone, Chance&) { phone.relaunch(); }},
    {2, [](PhoneModel& phone, Chance&) { phone.postAnother(); }},
    {5, lockThePhone},
    {60, [](PhoneModel& phone, Chance&) { phone.layOut(); }},
    {100, [](PhoneModel& phone, Chance& chance) { addItem(phone, chance, Item::Kind::bulletin, "notify"); }},
    {30, [](PhoneModel& phone, Chance& chance) { addItem(phone, chance, Item::Kind::card, "card"); }},
    {30, [](PhoneModel& phone, Chance& chance) { addItem(phone, chance, Item::Kind::alert, "alert"); }},
    {15, [](PhoneModel& phone, Chance& chance) { addItem(phone, chance, Item::Kind::unknown, "unknown"); }},
    {15, [](PhoneModel& phone, Chance& chance) { phone.addAgain(chance.below(100)); }},
    {30, [](PhoneModel& phone, Chance&) { phone.clear(); }},
    {10, [](PhoneModel& phone, Chance&) { phone.tearDown(); }},
    {40, [](PhoneModel& phone, Chance& chance) { phone.switchScreen(chance.oneIn(3)); }},
    {10, [](PhoneModel& phone, Chance&) { phone.addArt(); }},
    {10, [](PhoneModel& phone, Chance&) { phone.addUnderlay(); }},
    {90, [](PhoneModel& phone, Chance& chance) { phone.tapIcon(chance.oneIn(2), 1); }},
    {40, [](PhoneModel& phone, Chance& chance) { phone.tapIcon(chance.oneIn(2), 2); }},
    {40,
     [](PhoneModel& phone, Chance& chance) {
         const Place place = randomPlace(chance, phone.screen());
         phone.tap(place.x, place.y, chance.between(1, 2));
     }},
    {40,
     [](PhoneModel& phone, Chance& chance) {
         const Place place = randomPlace(chance, phone.screen());
         phone.press(place.x, place.y);
     }},
    {20, [](PhoneModel& phone, Chance&) { phone.release(); }},
    {20,
     [](PhoneModel& phone, Chance& chance) {
         const Place place = randomPlace(chance, phone.screen());
         phone.releaseAt(place.x, place.y);
     }},
    {40,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* directions[] = {"left", "right", "up", "down"};
         const Place place = randomPlace(chance, phone.screen());
         phone.swipe(place.x, place.y, chance.oneOf(directions));
     }},
    {20,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* messages[] = {"imgCalenderTapped", "imgNotificationsTapped", "normalizePrevTap",
                                             "cornerRadiusHook"};
         phone.send(chance.oneOf(messages));
     }},
    {15,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* messages[] = {"showCalendar", "showWeather", "hideALL", "loadWeather"};
         phone.sendToWidget(chance.oneOf(messages));
     }},
    {5,
     [](PhoneModel& phone, Chance& chance) {
         phone.setWidgetFrame({1.0 * chance.between(0, 60), 1.0 * chance.between(0, 60), 1.0 * chance.between(200, 400),
                               1.0 * chance.between(200, 400)});
     }},
    {5, [](PhoneModel& phone, Chance&) { phone.clearStrip(); }},
    {5, [](PhoneModel& phone, Chance&) { phone.showStrip(); }},
    {5, [](PhoneModel& phone, Chance& chance) { phone.setStripHeight(4 * chance.between(10, 50)); }},
    {15, [](PhoneModel& phone, Chance& chance) { phone.addToStrip(chance.below(100), chance.between(-3, 120)); }},
    {8,
     [](PhoneModel& phone, Chance& chance) {
         const int side = chance.between(70, 400);
         phone.makeSpare(side, chance.oneIn(2), chance.between(0, 100), chance.between(130, 260));
     }},
    {4, [](PhoneModel& phone, Chance&) { phone.dropSpare(); }},
    {60,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* messages[] = {"nextMonth", "prevMonth", "nextYear", "prevYear"};
         phone.sendToCalendar(randomCalendar(chance), chance.oneOf(messages));
     }},
    {25,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* messages[] = {"goOneMonthForward", "goOneMonthBack", "goOneYearForward", "goOneYearBack",
                                             "drawHeader",        "drawDays",       "clearViews"};
         phone.sendToCalendar(randomCalendar(chance), chance.oneOf(messages));
     }},
    {10,
     [](PhoneModel& phone, Chance& chance) {
         phone.plotCell(randomCalendar(chance), chance.between(-20, 300), chance.between(-20, 300), chance.between(-1, 120),
                        chance.oneIn(2));
     }},
    {40, [](PhoneModel& phone, Chance& chance) { phone.selectDay(randomCalendar(chance), chance.below(100), chance.oneIn(2)); }},
    {10, [](PhoneModel& phone, Chance& chance) { phone.setTouchable(randomCalendar(chance), !chance.oneIn(3)); }},
    {15,
     [](PhoneModel& phone, Chance& chance) {
         constexpr const char* classes[] = {"DeafDelegate", "DayDelegate", "DateDelegate", "ReleaseDelegate", "WholeDelegate"};
         phone.setDelegate(randomCalendar(chance), chance.oneOf(classes));
     }},
    {3, [](PhoneModel& phone, Chance&) { phone.dropDelegate(); }},
    {40,
     [](PhoneModel& phone, Chance& chance) { phone.ask(chance.between(0, PhoneModel::questionCount - 1), chance.below(100)); }},
};

Step randomStep(Chance& chance)
{
    static const std::uint64_t sum = [] {
        std::uint64_t weights = 0;
        for (const Happening& happening : happenings)
            weights += happening.weight;
        return weights;
    }();
    std::uint64_t place = chance.below(sum);
    std::size_t index = 0;
    while (place >= happenings[index].weight)
        place -= happenings[index++].weight;
    return {index, chance.below(~std::uint64_t{0})};
}

} // namespace

Setting randomSetting(Chance& chance)
{
    return {&chance.oneOf(regions), chance.oneOf(screens)};
}

std::vector<Step> randomDay(Chance& chance, std::uint64_t length)
{
    const auto lock = std::ranges::find(happenings, &lockThePhone, &Happening::happen);
    std::vector<Step> steps;
    for (std::uint64_t i = 0; i < length; ++i)
        steps.push_back(randomStep(chance));
    // Hardly anything can happen before.
    constexpr std::uint64_t earlyHours = 10;
    steps[chance.below(std::min(length, earlyHours))].happening = static_cast<std::size_t>(lock - std::begin(happenings));
    return steps;
}

std::size_t happeningCount()
{
    return std::size(happenings);
}

void happen(PhoneModel& phone, const Step& step)
{
    Chance chance(step.seed);
    happenings[step.happening].happen(phone, chance);
}
