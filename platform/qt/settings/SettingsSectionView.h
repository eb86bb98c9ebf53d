// One section of the settings window: its header, its card of rows and its notes.
#pragma once

#include <QBoxLayout>
#include <QLabel>
#include <QWidget>
#include <vector>

#include "platform/qt/settings/SettingsCard.h"

namespace vorlane::platform {

class SettingsSectionView : public QWidget {
    Q_OBJECT

public:
    // `intents` must outlive the view.
    SettingsSectionView(const SettingsSection& section, const SettingsIntents& intents);

    // Whether the existing rows can show this section: apart from notes, the types match.
    bool fits(const SettingsSection& section) const;

    void showSection(const SettingsSection& section);
    void setTheme(const Theme& theme);

private:
    struct Note {
        NoteRow row;
        std::size_t after = 0;  // number of controls above the note

        friend bool operator==(const Note&, const Note&) = default;
    };

    static std::vector<Note> notesOf(const SettingsSection& section);
    bool isFootnote(const Note& note) const { return note.after == rows.size(); }
    void showHeader(const std::string& text);
    void showNotes(const std::vector<Note>& fresh);
    void placeNotes();
    void paintNote(QLabel& label, const Note& note) const;

    Theme theme_;
    QVBoxLayout* stack;
    QLabel* header;
    SettingsCard* card;
    std::vector<SettingsRowView*> rows;
    std::vector<std::size_t> rowTypes;  // the types of `rows`, as variant indices
    std::vector<Note> notes;
    std::vector<QLabel*> noteLabels;  // one for each note
};

}  // namespace vorlane::platform
