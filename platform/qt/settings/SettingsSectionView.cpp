#include "platform/qt/settings/SettingsSectionView.h"

#include <algorithm>

#include "platform/qt/look/ControlStyle.h"
#include "platform/qt/settings/SettingsRows.h"

namespace vorlane::platform {

namespace {

bool isNote(const SettingsRow& row)
{
    return std::holds_alternative<NoteRow>(row);
}

QLabel* makeLabel(QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void setTextColor(QLabel& label, const QColor& color)
{
    auto colors = label.palette();
    colors.setColor(QPalette::WindowText, color);
    label.setPalette(colors);
}

}  // namespace

SettingsSectionView::SettingsSectionView(const SettingsSection& section,
                                         const SettingsIntents& intents)
    : stack(new QVBoxLayout(this)), header(makeLabel(this)), card(new SettingsCard(this))
{
    stack->setContentsMargins({});
    stack->addWidget(header);
    stack->addWidget(card);
    for (const auto& row : section.rows) {
        if (isNote(row)) continue;
        rows.push_back(makeSettingsRowView(row, intents));
        rowTypes.push_back(row.index());
        card->addRow(rows.back());
    }
    card->setVisible(!rows.empty());
}

bool SettingsSectionView::fits(const SettingsSection& section) const
{
    auto expected = rowTypes.begin();
    for (const auto& row : section.rows) {
        if (isNote(row)) continue;
        if (expected == rowTypes.end() || *expected++ != row.index()) return false;
    }
    return expected == rowTypes.end();
}

void SettingsSectionView::showSection(const SettingsSection& section)
{
    showHeader(section.header);
    auto view = rows.begin();
    for (const auto& row : section.rows) {
        if (!isNote(row)) (*view++)->showRow(row);
    }
    showNotes(notesOf(section));
}

void SettingsSectionView::setTheme(const Theme& theme)
{
    theme_ = theme;
    const ControlMetrics metrics(theme.body);
    stack->setSpacing(qRound(0.45 * metrics.line));
    header->setFont(theme.headline);
    header->setContentsMargins(metrics.indent, qRound(0.5 * metrics.line), metrics.indent, 0);
    setTextColor(*header, theme.text);
    card->setTheme(theme);
    for (std::size_t i = 0; i < notes.size(); ++i) paintNote(*noteLabels[i], notes[i]);
}

void SettingsSectionView::showHeader(const std::string& text)
{
    header->setText(QString::fromStdString(text));
    header->setVisible(!text.empty());
}

std::vector<SettingsSectionView::Note> SettingsSectionView::notesOf(const SettingsSection& section)
{
    std::vector<Note> found;
    std::size_t controls = 0;
    for (const auto& row : section.rows) {
        if (const auto* const note = std::get_if<NoteRow>(&row)) {
            found.push_back({.row = *note, .after = controls});
        } else {
            ++controls;
        }
    }
    return found;
}

void SettingsSectionView::showNotes(const std::vector<Note>& fresh)
{
    if (fresh == notes) return;
    const bool samePlaces = std::ranges::equal(fresh, notes, {}, &Note::after, &Note::after);
    notes = fresh;
    if (!samePlaces) placeNotes();
    for (std::size_t i = 0; i < notes.size(); ++i) paintNote(*noteLabels[i], notes[i]);
}

// A note between rows goes on the card, below the row it belongs to; the others go below the card.
// The labels are inserted backwards, so that notes at the same place keep their order, but created
// forwards, because screen readers read them in the order of creation.
void SettingsSectionView::placeNotes()
{
    for (auto* const label : noteLabels) delete label;
    noteLabels.clear();
    while (noteLabels.size() < notes.size()) noteLabels.push_back(makeLabel(this));
    for (std::size_t i = notes.size(); i-- > 0;) {
        if (isFootnote(notes[i])) {
            stack->insertWidget(stack->indexOf(card) + 1, noteLabels[i]);
        } else {
            card->insertNote(noteLabels[i], notes[i].after);
        }
    }
}

void SettingsSectionView::paintNote(QLabel& label, const Note& note) const
{
    const ControlMetrics metrics(theme_.body);
    const int below = isFootnote(note) ? 0 : qRound(0.6 * metrics.line);
    label.setText(QString::fromStdString(note.row.text));
    label.setFont(theme_.caption);
    label.setContentsMargins(metrics.indent, 0, metrics.indent, below);
    setTextColor(label, theme_.shade(note.row.color));
}

}  // namespace vorlane::platform
