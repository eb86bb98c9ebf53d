#include "platform/qt/look/TimeNotation.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>
#include <utility>

namespace vorlane::platform {

namespace {

constexpr int morning = 9;
constexpr int evening = 21;

QString withoutQuoted(QString format)
{
    static const QRegularExpression quoted(QStringLiteral("'[^']*'"));
    return format.remove(quoted);
}

// Normalized for comparison: one case, one width, digits from 0 to 9, no invisible characters.
QString plain(const QString& text)
{
    static const QRegularExpression unseen(QStringLiteral("\\p{Cf}"));
    QString found;
    for (const char32_t letter : text.normalized(QString::NormalizationForm_KC).toUcs4()) {
        const int digit = QChar::digitValue(letter);
        found += digit < 0 ? QString::fromUcs4(&letter, 1) : QString::number(digit);
    }
    return found.toCaseFolded().remove(unseen);
}

// "a. m." becomes "am".
QString squeezed(QString words)
{
    static const QRegularExpression spaces(QStringLiteral("[\\s\\p{Z}.]"));
    return words.remove(spaces);
}

struct Entry {
    QString words;  // around the digits
    QString separator;
    int hour = 0;
    int minute = 0;

    static std::optional<Entry> of(const QString& text)
    {
        static const QRegularExpression form(
            QStringLiteral("^(\\D*)(\\d{1,2})(?:(\\D+)(\\d{1,2})|(\\d\\d))?(\\D*)$"));
        const auto match = form.match(plain(text));
        if (!match.hasMatch()) return std::nullopt;
        return Entry{.words = squeezed(match.captured(1) + match.captured(6)),
                     .separator = match.captured(3).trimmed(),
                     .hour = match.captured(2).toInt(),
                     .minute = (match.captured(4) + match.captured(5)).toInt()};
    }
};

Entry shown(const TimeNotation& notation, int hour)
{
    return Entry::of(notation.text(QTime(hour, 5))).value_or(Entry{});
}

}  // namespace

QString TimeNotation::shortFormat(const QLocale& locale)
{
    static const QRegularExpression seconds(QStringLiteral("[:.]?ss?"));
    auto format = locale.timeFormat(QLocale::ShortFormat).remove(seconds);
    // Qt 6.4 keeps the "B" (part of the day) of zh_TW, which it cannot format.
    return format.replace(QLatin1Char('B'), QLatin1String("AP"));
}

QString TimeNotation::text(QTime time) const
{
    return locale.toString(time, format);
}

std::optional<QTime> TimeNotation::time(const QString& typed) const
{
    const auto entry = Entry::of(typed);
    if (!entry) return std::nullopt;
    const auto half = halfOf(entry->words);
    const QStringList separators{QString(),           QStringLiteral(":"),
                                 QStringLiteral("."), QStringLiteral(","),
                                 QStringLiteral("h"), shown(*this, morning).separator};
    if (!half || !separators.contains(entry->separator)) return std::nullopt;

    // "21:30 PM" is redundant but accepted; "21:30 AM" contradicts itself.
    int hour = entry->hour;
    if (*half == Half::am && hour > 12) return std::nullopt;
    if (*half != Half::none && hour <= 12) hour = hour % 12 + (*half == Half::pm ? 12 : 0);
    const QTime time(hour, entry->minute);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

bool TimeNotation::has12Hours() const
{
    return withoutQuoted(format).contains(QLatin1Char('a'), Qt::CaseInsensitive);
}

// The locale's words come first: an English word for one half of the day may be the locale's word
// for the other half.
std::optional<TimeNotation::Half> TimeNotation::halfOf(const QString& words) const
{
    const auto known = [](const QString& word) { return squeezed(plain(word)); };
    const bool shows = has12Hours();
    const std::array<std::pair<QString, Half>, 10> halves{
        {{QString(), Half::none},
         {shown(*this, morning).words, shows ? Half::am : Half::none},
         {shown(*this, evening).words, shows ? Half::pm : Half::none},
         {known(locale.amText()), Half::am},
         {known(locale.pmText()), Half::pm},
         {QStringLiteral("am"), Half::am},
         {QStringLiteral("a"), Half::am},
         {QStringLiteral("pm"), Half::pm},
         {QStringLiteral("p"), Half::pm},
         {QStringLiteral("h"), Half::none}}};
    const auto* const found = std::ranges::find(halves, words, &std::pair<QString, Half>::first);
    return found == halves.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace vorlane::platform
