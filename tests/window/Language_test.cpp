// The window in another language: every text of its own has a translation, and it is shown.
#include "window/Language.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <locale>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "app/Messages.h"
#include "window/HelpDialog.h"
#include "window/Messages.h"
#include "window/WindowTest.h"

namespace walrim {
namespace {

namespace fs = std::filesystem;

const fs::path Top = WALRIM_SOURCE_DIR;
const QString Translation = QString::fromUtf8((Top / "share/translations/walrim_en.ts").c_str());

std::string Contents(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// Kana, Chinese characters, and the wide signs that stand with them.
bool IsJapanese(const std::string& text) {
  return std::ranges::any_of(QString::fromStdString(text), [](QChar c) {
    return (c >= QChar(0x3000) && c <= QChar(0x9FFF)) || (c >= QChar(0xFF01) && c <= QChar(0xFF60));
  });
}

/// What the escapes of a literal stand for.
std::string Unescaped(const std::string& literal) {
  std::string text;
  for (std::size_t i = 0; i < literal.size(); ++i) {
    if (literal[i] != '\\') {
      text += literal[i];
      continue;
    }
    const char c = literal[++i];
    text += c == 'n' ? '\n' : c == 't' ? '\t' : c;
  }
  return text;
}

/// The literals of a source, those that stand one behind the other as one.
std::vector<std::string> Literals(const std::string& source) {
  std::vector<std::string> literals;
  bool goes_on = false;
  for (std::size_t i = 0; i < source.size(); ++i) {
    if (source.compare(i, 2, "//") == 0) {
      i = source.find('\n', i);
      if (i == std::string::npos) break;
    } else if (source[i] == '\'') {
      i = source.find('\'', i + (source[i + 1] == '\\' ? 3U : 1U));
    } else if (source[i] == '"') {
      std::size_t end = i + 1;
      while (source[end] != '"')
        end += source[end] == '\\' ? 2U : 1U;
      if (!goes_on) literals.emplace_back();
      literals.back() += Unescaped(source.substr(i + 1, end - i - 1));
      goes_on = true;
      i = end;
    } else if (source[i] != ' ' && source[i] != '\n') {
      goes_on = false;
    }
  }
  return literals;
}

/// Where the texts stand that a user of the window is shown.
std::vector<fs::path> SourcesWithTexts() {
  const std::set<std::string> stems{"Messages", "Format", "MapPages"};
  std::vector<fs::path> paths;
  for (const auto& entry : fs::recursive_directory_iterator(Top / "src")) {
    const fs::path folder = fs::relative(entry.path(), Top / "src").begin()->string();
    const bool is_source = entry.path().extension() == ".h" || entry.path().extension() == ".cpp";
    const bool has_texts = folder == "window" || (folder != "cli" && stems.contains(entry.path().stem().string()));
    if (is_source && has_texts) paths.push_back(entry.path());
  }
  return paths;
}

/// Texts that are as they are in every language, a line each; "\n" is a line's end in them.
std::set<std::string> KeptTexts() {
  std::set<std::string> kept;
  std::istringstream lines(Contents(Top / "share/translations/kept.txt"));
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.front() != '#') kept.insert(Unescaped(line));
  }
  return kept;
}

TEST(Translation, HasEveryTextThatIsShown) {
  const TranslatedTexts english(Translation);
  const std::set<std::string> kept = KeptTexts();
  std::set<std::string> seen;
  std::size_t japanese = 0;
  for (const fs::path& path : SourcesWithTexts()) {
    for (const std::string& text : Literals(Contents(path))) {
      seen.insert(text);
      if (!IsJapanese(text)) continue;
      ++japanese;
      EXPECT_TRUE(english.Find(text) || kept.contains(text)) << path.filename() << ": " << text;
    }
  }
  EXPECT_GT(japanese, 400U);
  for (const std::string& text : kept) {
    EXPECT_TRUE(seen.contains(text)) << "kept, but nowhere shown: " << text;
    EXPECT_FALSE(english.Find(text)) << "kept and translated: " << text;
  }
  for (const auto& [text, translation] : english.Texts())
    EXPECT_TRUE(seen.contains(text)) << "translated, but nowhere shown: " << text;
}

TEST(Translation, HasThePartsOfEachTextAndNothingJapanese) {
  const std::regex part("%[1-9]");
  const auto parts = [&part](const std::string& text) {
    return std::set<std::string>(std::sregex_token_iterator(text.begin(), text.end(), part), {});
  };
  const TranslatedTexts english(Translation);
  for (const auto& [text, translation] : english.Texts()) {
    EXPECT_EQ(parts(text), parts(translation)) << text;
    EXPECT_FALSE(IsJapanese(translation)) << translation;
    EXPECT_FALSE(translation.empty()) << text;
  }
}

TEST(Translation, AFileThatIsNoneIsRefused) {
  EXPECT_THROW(TranslatedTexts("/nowhere.ts"), std::runtime_error);
  const TemporaryFolder folder;
  PutFile(folder.Path("cut.ts"), "<TS><context><message><source>A</source><translation>B");
  EXPECT_THROW(TranslatedTexts(QString::fromStdString(folder.Path("cut.ts"))), std::runtime_error);
  PutFile(folder.Path("half.ts"),
          "<TS><context><message><source>A</source><translation type=\"unfinished\">B</translation></message>"
          "<message><location/><source>C</source><translation>D</translation></message></context></TS>");
  const TranslatedTexts half(QString::fromStdString(folder.Path("half.ts")));
  EXPECT_EQ(half.Find("A"), std::nullopt);
  EXPECT_EQ(half.Find("C"), "D");
}

TEST(LanguageOf, IsTheChosenOneOrTheDesktops) {
  EXPECT_EQ(LanguageOf("en", QLocale("ja_JP")), Language::English);
  EXPECT_EQ(LanguageOf("ja", QLocale("en_US")), Language::Japanese);
  EXPECT_EQ(LanguageOf("", QLocale("ja_JP")), Language::Japanese);
  EXPECT_EQ(LanguageOf("", QLocale("en_GB")), Language::English);
  EXPECT_EQ(LanguageOf("", QLocale("de_DE")), Language::English);
  EXPECT_EQ(LanguageOf("", QLocale::c()), Language::Japanese);
  EXPECT_EQ(LanguageOf("xx", QLocale("ja_JP")), Language::Japanese) << "a code that nobody knows";
}

class EnglishWindow : public WindowTest {
 protected:
  EnglishWindow() : before_(std::locale()) {
    Speak(Language::English);
    UseReceiver({});
  }
  ~EnglishWindow() override {
    window.reset();
    std::locale::global(before_);
  }

  /// All that the window shows or says, each with where it stands.
  [[nodiscard]] std::map<std::string, std::string> Shown() const {
    std::map<std::string, std::string> shown;
    const auto add = [&shown](const QObject& object, const char* what, const QString& text) {
      if (!text.isEmpty()) shown[object.objectName().toStdString() + what + text.toStdString()] = text.toStdString();
    };
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
      add(*widget, " tip: ", widget->toolTip());
      add(*widget, " title: ", widget->windowTitle());
      if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) add(*widget, ": ", button->text());
      if (const auto* label = qobject_cast<const QLabel*>(widget)) add(*widget, ": ", label->text());
      if (const auto* tabs = qobject_cast<const QTabWidget*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i)
          add(*widget, ": ", tabs->tabText(i));
      }
      if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
        for (int i = 0; i < box->count(); ++i)
          add(*widget, ": ", box->itemText(i));
      }
    }
    for (const QAction* action : window->findChildren<QAction*>())
      add(*action, " action: ", action->text());
    return shown;
  }

 private:
  std::locale before_;
};

TEST_F(EnglishWindow, ShowsNothingJapaneseOfItsOwn) {
  const std::set<std::string> kept = KeptTexts();
  const auto shown = Shown();
  EXPECT_GT(shown.size(), 100U);
  for (const auto& [where, text] : shown) {
    if (kept.contains(text)) continue;
    EXPECT_FALSE(IsJapanese(text)) << where;
  }
}

TEST_F(EnglishWindow, SaysWhatItDoesInEnglish) {
  CheckAll("DownCheck");
  Click("GpsDownLoad");
  CheckAll("DoCheck");
  Click("Delete");
  EXPECT_EQ(Get<QAction>("Undo").text().toStdString().find("Undo: Delete (Waypoint: "), 0U)
      << Get<QAction>("Undo").text().toStdString();
  EXPECT_EQ(messages::Shortened(3, 2), "Points thinned out: 3 → 2");
}

TEST_F(EnglishWindow, TheHelpPageIsEnglishAndHasTheSameKeys) {
  const std::string english = HelpPage().toStdString();
  EXPECT_FALSE(IsJapanese(english));
  const auto rows = [](const std::string& page) {
    const std::regex row("\n\\|");
    return std::distance(std::sregex_iterator(page.begin(), page.end(), row), {});
  };
  EXPECT_EQ(rows(english), rows(Contents(Top / "share/help/ja.md")));
  for (const QAction* action : window->findChildren<QAction*>()) {
    const std::string shortcut = action->shortcut().toString().toStdString();
    if (!shortcut.starts_with("Ctrl+") || shortcut == "Ctrl+Q") continue;
    EXPECT_NE(english.find(shortcut), std::string::npos) << shortcut;
  }
}

TEST_F(EnglishWindow, MnemonicsOfAMenuLeadToOneEntryEach) {
  for (const QMenu* menu : window->findChildren<QMenu*>()) {
    std::map<QChar, QString> entries;
    for (const QAction* action : menu->actions()) {
      const qsizetype sign = action->text().indexOf('&');
      if (sign < 0) continue;
      const QChar key = action->text().at(sign + 1).toUpper();
      EXPECT_FALSE(entries.contains(key))
          << menu->title().toStdString() << ": " << action->text().toStdString() << ", " << entries[key].toStdString();
      entries[key] = action->text();
    }
  }
}

TEST_F(WindowTest, AnotherLanguageIsRememberedForTheNextStart) {
  store = std::make_unique<QSettings>(QString::fromStdString(folder.Path("walrim.ini")), QSettings::IniFormat);
  UseReceiver({});
  EXPECT_TRUE(Get<QAction>("Language_ja").isChecked());
  Get<QAction>("Language_en").trigger();
  EXPECT_EQ(store->value("window/language").toString(), "en");
  EXPECT_EQ(Status(), window_messages::LanguageFromNextStart);
  EXPECT_FALSE(Get<QAction>("Language_ja").isChecked());
  UseReceiver({});
  EXPECT_TRUE(Get<QAction>("Language_en").isChecked());
}

}  // namespace
}  // namespace walrim
