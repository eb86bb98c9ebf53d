#include "platform/qt/look/TimeNotation.h"

#include <gmock/gmock.h>

#include <set>

#include "platform/qt/chart/LocalTimes.h"
#include "tests/platform/qt/support/TimeZone.h"

namespace vorlane::platform {
namespace {

using testing::Each;
using testing::Optional;

const std::vector<QTime> times{QTime(0, 0),   QTime(0, 30),  QTime(9, 5),  QTime(12, 0),
                               QTime(12, 30), QTime(21, 30), QTime(23, 59)};

// Describes a failed case.
std::string where(const TimeNotation& notation, const QString& text)
{
    return (notation.locale.name() + " " + notation.format + ": " + text).toStdString();
}

std::vector<QLocale> allLocales()
{
    const auto found =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    return {found.begin(), found.end()};
}

// One locale for each distinct pair of digits and AM/PM words.
std::vector<QLocale> differentLocales()
{
    std::set<QString> seen;
    auto found = allLocales();
    std::erase_if(found, [&](const QLocale& locale) {
        const auto words = locale.zeroDigit() + locale.amText() + locale.pmText();
        return !seen.insert(words).second;
    });
    return found;
}

std::optional<QTime> read(const char* locale, const QString& typed)
{
    return TimeNotation{.locale = QLocale(locale)}.time(typed);
}

TEST(TimeNotationTest, ReadsWhatItWritesInEveryLocale)
{
    ASSERT_GT(allLocales().size(), 500U);
    for (const auto& locale : allLocales()) {
        const TimeNotation notation{.locale = locale};
        for (const auto time : times) {
            const auto shown = notation.text(time);
            EXPECT_EQ(notation.time(shown), time) << where(notation, shown);
            EXPECT_EQ(notation.time(shown.toUpper()), time) << where(notation, shown.toUpper());
        }
    }
}

// The formats of other Qt versions, with each locale's digits and words.
TEST(TimeNotationTest, ReadsWhatItWritesInEveryFormat)
{
    for (const auto* const format : {"HH:mm",        "H:mm",         "H:m",
                                     "H.mm",         "HH.mm",        "HH 'h' mm",
                                     "H'h'mm",       "H:mm 'ч'.",    "'Kl'. H.mm",
                                     "h:mm\u202fAp", "h:mm\u00a0AP", "hh:mm\u202fAp",
                                     "h:mm Ap",      "h.mm. Ap",     "h:mmap",
                                     "Ap h.mm",      "Aph:mm",       "Ap 'ga' h:mm",
                                     "Ap नि h:mm",   "AP H:mm",      "ཆུ་ཚོད་ h སྐར་མ་ mm Ap"}) {
        for (const auto& locale : differentLocales()) {
            const TimeNotation notation{.locale = locale, .format = format};
            for (const auto time : times) {
                const auto shown = notation.text(time);
                EXPECT_EQ(notation.time(shown), time) << where(notation, shown);
            }
        }
    }
}

TEST(TimeNotationTest, Reads12And24HourTimesInEveryLocale)
{
    for (const auto& locale : allLocales()) {
        const TimeNotation notation{.locale = locale};
        for (const auto* const text : {"21:30", "21.30", "2130", "21h30", "21 30", " 21:30 "})
            EXPECT_EQ(notation.time(text), QTime(21, 30)) << where(notation, text);
        for (const auto* const text : {"0:30", "00:30", "030", "0030"})
            EXPECT_EQ(notation.time(text), QTime(0, 30)) << where(notation, text);
        for (const auto& word : {notation.locale.pmText(), QStringLiteral("pm")}) {
            for (const auto* const space : {"", " ", "\u00a0", "\u202f"}) {
                const auto after = "9:30" + (space + word);
                EXPECT_EQ(notation.time(after), QTime(21, 30)) << where(notation, after);
                const auto before = word + (space + QStringLiteral("9:30"));
                EXPECT_EQ(notation.time(before), QTime(21, 30)) << where(notation, before);
            }
        }
        const auto am = notation.locale.amText() + "12";
        EXPECT_EQ(notation.time(am), QTime(0, 0)) << where(notation, am);
    }
}

TEST(TimeNotationTest, ReadsCommonSpellingsOfAmAndPm)
{
    for (const auto* const locale : {"en_US", "en_CA", "es_MX", "de_DE", "zh_TW", "ar_EG", "C"}) {
        for (const auto* const text :
             {"9pm", "9 P", "9 p.m.", "9 p. m.", "PM 9", "9:00pm", "900 PM"})
            EXPECT_THAT(read(locale, text), Optional(QTime(21, 0))) << locale << ' ' << text;
        for (const auto* const text : {"9am", "9 A", "9 a.m.", "9 a. m.", "AM 9", "9:00am", "9"})
            EXPECT_THAT(read(locale, text), Optional(QTime(9, 0))) << locale << ' ' << text;
    }
    EXPECT_THAT(read("ko_KR", "오후9:30"), Optional(QTime(21, 30)));
    EXPECT_THAT(read("ko_KR", "오전 9:30"), Optional(QTime(9, 30)));
    EXPECT_THAT(read("zh_TW", "下午9：３０"), Optional(QTime(21, 30)));
    EXPECT_THAT(read("fa_IR", "۹:۳۰ بعدازظهر"), Optional(QTime(21, 30)));
    EXPECT_THAT(read("ar_EG", "م ٩:٣٠"), Optional(QTime(21, 30)));
    EXPECT_THAT(read("ar_EG", "\u200f٩:٣٠\u200f م"), Optional(QTime(21, 30)));
}

TEST(TimeNotationTest, ReadsDigitsOfAnyScript)
{
    for (const auto* const locale : {"en_US", "ar_EG", "fa_IR", "mr_IN"}) {
        for (const auto* const text :
             {"21:30", "٢١:٣٠", "۲۱:۳۰", "२१:३०", "２１：３０", "𞥒𞥑:𞥓𞥐"})
            EXPECT_THAT(read(locale, text), Optional(QTime(21, 30))) << locale << ' ' << text;
    }
}

TEST(TimeNotationTest, ReadsTwelveAsTheFirstHourOfAmAndPm)
{
    EXPECT_THAT(read("en_US", "12:00 AM"), Optional(QTime(0, 0)));
    EXPECT_THAT(read("en_US", "12:30 AM"), Optional(QTime(0, 30)));
    EXPECT_THAT(read("en_US", "12:00 PM"), Optional(QTime(12, 0)));
    EXPECT_THAT(read("en_US", "12:30 PM"), Optional(QTime(12, 30)));
    EXPECT_THAT(read("en_US", "12:30"), Optional(QTime(12, 30)));
    EXPECT_THAT(read("ja_JP", "午後0:30"), Optional(QTime(12, 30))) << "as many write it there";
}

TEST(TimeNotationTest, AcceptsAmAndPmInA24HourTimeWhenTheyAgree)
{
    EXPECT_THAT(read("en_US", "21:30 PM"), Optional(QTime(21, 30)));
    EXPECT_THAT(read("en_US", "0:30 AM"), Optional(QTime(0, 30)));
    EXPECT_EQ(read("en_US", "21:30 AM"), std::nullopt);
}

TEST(TimeNotationTest, RejectsEverythingElse)
{
    for (const auto* const locale : {"C", "en_US", "de_DE", "ar_EG", "zh_TW"}) {
        for (const auto* const text :
             {"",     " ",        ":",          "PM",   "soon",  "24:00", "25:00", "9:60",
              "999",  "21:30:00", "12345",      "9:",   ":30",   "-9:30", "9-30",  "9/30",
              "9+30", "9:30 XM",  "9:30 AM PM", "9x30", "9::30", "½"})
            EXPECT_EQ(read(locale, text), std::nullopt) << locale << " '" << text << "'";
    }
}

// Qt would print an unknown format letter unchanged.
TEST(TimeNotationTest, UsesOnlyFormatLettersThatQtReplaces)
{
    for (const auto& locale : allLocales()) {
        auto format = TimeNotation::shortFormat(locale).toStdString();
        const auto begin = format.find('\'');
        if (begin != std::string::npos) format.erase(begin, format.rfind('\'') + 1 - begin);
        std::erase_if(
            format, [](char letter) { return !std::isalpha(static_cast<unsigned char>(letter)); });
        EXPECT_THAT(format, Each(testing::AnyOf('H', 'h', 'm', 'A', 'a', 'P', 'p')))
            << locale.name().toStdString();
    }
    EXPECT_EQ(TimeNotation{.locale = QLocale("zh_TW")}.text(QTime(6, 0)), "上午6:00");
}

TEST(TimeNotationTest, GivesEachHourOfTheChartItsLabel)
{
    const TimeZone utc("UTC");
    for (const auto& locale : allLocales()) {
        const LocalTimes local{.locale = locale};
        std::set<QString> labels;
        for (int hour = 0; hour < 24; ++hour) {
            const auto date = local.date(QDateTime(QDate(2026, 3, 4), QTime(hour, 0)));
            labels.insert(local.fullHour(date));
            EXPECT_EQ(TimeNotation{.locale = locale}.time(local.fullHour(date)), QTime(hour, 0))
                << locale.name().toStdString() << ' ' << local.fullHour(date).toStdString();
        }
        EXPECT_EQ(labels.size(), 24U) << locale.name().toStdString();
    }
}

}  // namespace
}  // namespace vorlane::platform
