#include "EditorPage.h"

#include "SpellingLanguages.h"
#include "Switch.h"
#include "ThemePreview.h"

#include <Spelling/SpellingDictionaries.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QAction>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Bounds of what can be chosen here; a theme, or another program, may have set others. Units: points; hundredths.
constexpr std::pair<int, int> kFontSizes{9, 40};
constexpr std::pair<int, int> kLineHeights{110, 240};
/// In tenths, which make the width of the column in times the font size.
constexpr std::pair<int, int> kLineWidths{240, 900};
constexpr std::pair<int, int> kParagraphSpacings{0, 200};
constexpr int kSampleHeight = 190;

/// The editor's page in small, in the fonts and colours of the moment.
class Sample final : public QWidget
{
public:
    explicit Sample(QWidget *parent)
        : QWidget(parent)
    {
        setFixedHeight(kSampleHeight);
        setAttribute(Qt::WA_OpaquePaintEvent, false);
    }
    void forget()
    {
        m_picture = {};
        update();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
            forget(); // another theme is in effect
        }
        QWidget::changeEvent(event);
    }

    void paintEvent(QPaintEvent * /*event*/) override
    {
        const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
        if (preferences == nullptr) {
            return;
        }
        if (m_picture.isNull() || m_pictureSize != size()) {
            m_picture = pictureOfPreferences(*preferences, size(), devicePixelRatioF());
            m_pictureSize = size();
        }
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath shape; // the upper corners are the card's
        shape.addRoundedRect(QRectF(rect()).adjusted(0, 0, 0, 12), 9, 9);
        painter.setClipPath(shape);
        painter.drawImage(QPointF(), m_picture);
    }

private:
    QImage m_picture;
    QSize m_pictureSize;
};

/// What the font theme says where the user set nothing.
double themeValue(const QBNotesPreferenceManager &preferences, double (QBNotesTextThemeManager::*value)() const)
{
    QBNotesTextThemeManager manager;
    manager.loadTheme(
        QBNotesThemesManager::textThemeForThemeName(preferences.currentAppThemeName(), preferences.fontThemeName()));
    return (manager.*value)();
}

int rounded(double value)
{
    return int(std::lround(value));
}

} // namespace

EditorPage::EditorPage(QWidget *parent)
    : PreferencesForm(parent)
{
    if (QBNotesPreferenceManager::sharedPreferenceManager() == nullptr) {
        return;
    }
    addFonts();
    addMarkup();
    addWriting();
}

void EditorPage::addFonts()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const QStringList fonts{u"fontThemeName"_s, u"currentAppThemeName"_s};
    addGroup(tr("Text"));
    // 1. The sample.
    auto *sample = new Sample(widget());
    sample->setAccessibleName(tr("Sample of a note"));
    addWide(sample);
    follow(fonts + QStringList{u"editorFontSize"_s, u"editorLineHeightMultiplier"_s, u"editorLineWidthMultiplier"_s,
                               u"editorParagraphSpacingMultiplier"_s, u"markdownCompatibilityMode"_s},
           [sample] { sample->forget(); });
    // 2. Fonts and sizes.
    QList<std::pair<QString, QVariant>> names;
    for (const QString &name : QBNotesThemesManager::availableFontThemesNames()) {
        names.append({name, name});
    }
    addChoice(
        tr("Font"), tr("Where this computer lacks a font, one of the same kind stands in."), {u"fontThemeName"_s},
        names,
        [preferences] {
            const QString name = preferences->fontThemeName();
            return QBNotesThemesManager::availableFontThemesNames().contains(name)
                       ? name
                       : QBNotesThemesManager::defaultFontThemeName();
        },
        [preferences](const QVariant &name) { preferences->setFontThemeName(name.toString()); });
    auto *size = new QSpinBox(widget());
    size->setRange(kFontSizes.first, kFontSizes.second);
    size->setSuffix(tr(" pt", "points, behind a font size"));
    addRow(tr("Font size"), {}, size);
    size->findChild<QLineEdit *>()->setAccessibleName(size->accessibleName());
    follow(fonts + QStringList{u"editorFontSize"_s}, [size, preferences] {
        const QSignalBlocker blocker(size);
        size->setValue(rounded(
            preferences->editorFontSize().value_or(themeValue(*preferences, &QBNotesTextThemeManager::baseFontSize))));
    });
    connect(size, &QSpinBox::valueChanged, this, [preferences](int points) { preferences->setEditorFontSize(points); });
    addSlider(
        tr("Line height"), {}, fonts + QStringList{u"editorLineHeightMultiplier"_s}, kLineHeights,
        [preferences] {
            return rounded(100 * preferences->editorLineHeightMultiplier().value_or(
                                     themeValue(*preferences, &QBNotesTextThemeManager::lineHeightMultiplier)));
        },
        [preferences](int step) { preferences->setEditorLineHeightMultiplier(step / 100.0); },
        [](int step) { return tr("× %1", "a multiple").arg(QLocale().toString(step / 100.0, 'f', 2)); });
    addSlider(
        tr("Line width"), {}, fonts + QStringList{u"editorLineWidthMultiplier"_s}, kLineWidths,
        [preferences] {
            return rounded(10 * preferences->editorLineWidthMultiplier().value_or(
                                    themeValue(*preferences, &QBNotesTextThemeManager::lineWidthMultiplier)));
        },
        [preferences](int step) { preferences->setEditorLineWidthMultiplier(step / 10.0); },
        [](int step) { return tr("%1 em", "width of a line").arg(QLocale().toString(step / 10.0, 'f', 1)); });
    addSlider(
        tr("Space between paragraphs"), {}, fonts + QStringList{u"editorParagraphSpacingMultiplier"_s},
        kParagraphSpacings,
        [preferences] {
            return rounded(100 * preferences->editorParagraphSpacingMultiplier().value_or(
                                     themeValue(*preferences, &QBNotesTextThemeManager::paragraphSpacingMultiplier)));
        },
        [preferences](int step) { preferences->setEditorParagraphSpacingMultiplier(step / 100.0); },
        [](int step) { return tr("%1 em", "space").arg(QLocale().toString(step / 100.0, 'f', 2)); });
    // 3. Back to the theme's.
    auto *reset = new QPushButton(tr("Use the Font’s Own"), widget());
    addRow(tr("Sizes and spaces"), tr("Every font comes with sizes that suit it."), reset);
    connect(reset, &QPushButton::clicked, this, [preferences] {
        preferences->setEditorFontSize(std::nullopt);
        preferences->setEditorLineHeightMultiplier(std::nullopt);
        preferences->setEditorLineWidthMultiplier(std::nullopt);
        preferences->setEditorParagraphSpacingMultiplier(std::nullopt);
    });
    follow({u"editorFontSize"_s, u"editorLineHeightMultiplier"_s, u"editorLineWidthMultiplier"_s,
            u"editorParagraphSpacingMultiplier"_s},
           [reset, preferences] {
               reset->setEnabled(preferences->editorFontSize() || preferences->editorLineHeightMultiplier() ||
                                 preferences->editorLineWidthMultiplier() ||
                                 preferences->editorParagraphSpacingMultiplier());
           });
}

void EditorPage::addMarkup()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    addGroup(tr("Markup"));
    addChoice(
        tr("Notes are written in"), tr("Your notes stay as they are written: this decides how their signs are read."),
        {u"markdownCompatibilityMode"_s}, {{tr("Quib’s markup"), false}, {tr("Markdown"), true}},
        [preferences] { return preferences->markdownCompatibilityMode(); },
        [preferences](const QVariant &isMarkdown) { preferences->setMarkdownCompatibilityMode(isMarkdown.toBool()); });
    QLabel *example = addParagraph({});
    follow({u"markdownCompatibilityMode"_s}, [example, preferences] {
        const bool isMarkdown = preferences->markdownCompatibilityMode();
        const QString bold = isMarkdown ? u"**%1**"_s : u"*%1*"_s;
        const QString italic = isMarkdown ? u"*%1*"_s : u"/%1/"_s;
        const QString struck = isMarkdown ? u"~~%1~~"_s : u"-%1-"_s;
        const QString underlined = isMarkdown ? u"~%1~"_s : u"_%1_"_s;
        const QString todo = isMarkdown ? u"- [ ] %1"_s : u"- %1"_s;
        const QString done = isMarkdown ? u"- [x] %1"_s : u"+ %1"_s;
        const QStringList signs{bold.arg(tr("bold")),     italic.arg(tr("italic")), underlined.arg(tr("underlined")),
                                struck.arg(tr("struck")), todo.arg(tr("to do")),    done.arg(tr("done"))};
        example->setText(signs.join(u"      "_s));
    });
}

void EditorPage::addWriting()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    addGroup(tr("Writing"));
    addSwitch(
        tr("Complete tags, links and languages"), tr("A list of what fits appears while you type."),
        {u"autocompleteEnabled"_s}, [preferences] { return preferences->autocompleteEnabled(); },
        [preferences](bool isOn) { preferences->setAutocompleteEnabled(isOn); });
    addSwitch(
        tr("Check the spelling"), tr("Misspelt words get a wavy line, in the languages of your dictionaries."),
        {u"spellCheckingEnabled"_s}, [preferences] { return preferences->spellCheckingEnabled(); },
        [preferences](bool isOn) { preferences->setSpellCheckingEnabled(isOn); });
    addSpellingLanguages();
    addSwitch(
        tr("Fold completed to-dos"), tr("What is ticked off takes one short line until you open it."),
        {u"foldCompletedTodo"_s}, [preferences] { return preferences->foldCompletedTodo(); },
        [preferences](bool isOn) { preferences->setFoldCompletedTodo(isOn); });
    addSwitch(
        tr("Typewriter scrolling"), tr("The line you write in stays at the same height."),
        {u"editorTypewriterScrolling"_s}, [preferences] { return preferences->editorTypewriterScrolling(); },
        [preferences](bool isOn) { preferences->setEditorTypewriterScrolling(isOn); });
    addSwitch(
        tr("Focus on the paragraph"), tr("All but the paragraph you write in stands back."), {u"editorFocusMode"_s},
        [preferences] { return preferences->editorFocusMode(); },
        [preferences](bool isOn) { preferences->setEditorFocusMode(isOn); });
    addSwitch(
        tr("Show the format bar"), {}, {u"editorFormatBar"_s}, [preferences] { return preferences->editorFormatBar(); },
        [preferences](bool isOn) { preferences->setEditorFormatBar(isOn); });
}

void EditorPage::addSpellingLanguages()
{
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const auto dictionaries = spellingDictionariesInFolders(standardSpellingFolders());
    if (dictionaries.isEmpty()) {
        addParagraph(tr("There is no dictionary on this computer. Packages of dictionaries are named %1.")
                         .arg(u"\u2066hunspell-…\u2069"_s));
        return;
    }
    auto *button = new QPushButton(widget());
    auto *menu = new QMenu(button);
    button->setMenu(menu);
    addRow(tr("Languages of the spelling"), tr("Which of them a paragraph is in is told by its words."), button);
    QAction *ofDesktop = menu->addAction(tr("As the Desktop"));
    ofDesktop->setCheckable(true);
    menu->addSeparator();
    QList<QAction *> choices;
    for (const SpellingDictionaryFile &dictionary : dictionaries) {
        QAction *choice = menu->addAction(titleOfSpellingLanguage(dictionary.language));
        choice->setCheckable(true);
        choice->setData(dictionary.language);
        choices.append(choice);
    }
    const auto show = [preferences, button, ofDesktop, choices] {
        const QStringList chosen = chosenSpellingLanguages(*preferences);
        QStringList titles;
        for (QAction *choice : choices) {
            choice->setChecked(chosen.contains(choice->data().toString()));
            if (choice->isChecked()) {
                titles.append(choice->text());
            }
        }
        ofDesktop->setChecked(titles.isEmpty());
        button->setText(titles.isEmpty()     ? ofDesktop->text()
                        : titles.size() == 1 ? titles.constFirst()
                                             : tr("%n languages", nullptr, int(titles.size())));
        button->setAccessibleDescription(titles.isEmpty() ? ofDesktop->text() : titles.join(u", "_s));
    };
    show();
    connect(menu, &QMenu::aboutToShow, button, show);
    connect(menu, &QMenu::triggered, button, [preferences, ofDesktop, choices, show](const QAction *chosen) {
        QStringList languages;
        for (const QAction *choice : choices) {
            if (choice->isChecked() && chosen != ofDesktop) {
                languages.append(choice->data().toString());
            }
        }
        setChosenSpellingLanguages(*preferences, languages);
        show();
    });
}

} // namespace quib
