#include "text/Romaji.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "text/Scan.h"
#include "text/Utf8.h"

namespace walrim {

namespace {

struct Reading {
  std::string_view kana;  ///< katakana
  std::string_view roman;
};

/// Two characters, of which the second is small, stand before one.
constexpr Reading Pairs[] = {
    {"キャ", "KYA"}, {"キュ", "KYU"}, {"キョ", "KYO"}, {"シャ", "SHA"}, {"シュ", "SHU"}, {"ショ", "SHO"},
    {"シェ", "SHE"}, {"チャ", "CHA"}, {"チュ", "CHU"}, {"チョ", "CHO"}, {"チェ", "CHE"}, {"ニャ", "NYA"},
    {"ニュ", "NYU"}, {"ニョ", "NYO"}, {"ヒャ", "HYA"}, {"ヒュ", "HYU"}, {"ヒョ", "HYO"}, {"ミャ", "MYA"},
    {"ミュ", "MYU"}, {"ミョ", "MYO"}, {"リャ", "RYA"}, {"リュ", "RYU"}, {"リョ", "RYO"}, {"ギャ", "GYA"},
    {"ギュ", "GYU"}, {"ギョ", "GYO"}, {"ジャ", "JA"},  {"ジュ", "JU"},  {"ジョ", "JO"},  {"ジェ", "JE"},
    {"ヂャ", "JA"},  {"ヂュ", "JU"},  {"ヂョ", "JO"},  {"ビャ", "BYA"}, {"ビュ", "BYU"}, {"ビョ", "BYO"},
    {"ピャ", "PYA"}, {"ピュ", "PYU"}, {"ピョ", "PYO"}, {"ヴァ", "VA"},  {"ヴィ", "VI"},  {"ヴェ", "VE"},
    {"ヴォ", "VO"},  {"ファ", "FA"},  {"フィ", "FI"},  {"フェ", "FE"},  {"フォ", "FO"},  {"ティ", "TI"},
    {"ディ", "DI"},  {"トゥ", "TU"},  {"ドゥ", "DU"},  {"デュ", "DYU"}, {"ウィ", "WI"},  {"ウェ", "WE"},
    {"ウォ", "WO"},
};

/// From U+30A1 on, one for each character.
constexpr std::string_view Singles[] = {
    "A",  "A",  "I",   "I",  "U",  "U",   "E",  "E",  "O",  "O",         // ァアィイゥウェエォオ
    "KA", "GA", "KI",  "GI", "KU", "GU",  "KE", "GE", "KO", "GO",        // カガキギクグケゲコゴ
    "SA", "ZA", "SHI", "JI", "SU", "ZU",  "SE", "ZE", "SO", "ZO",        // サザシジスズセゼソゾ
    "TA", "DA", "CHI", "JI", "",   "TSU", "ZU", "TE", "DE", "TO", "DO",  // タダチヂッツヅテデトド
    "NA", "NI", "NU",  "NE", "NO",                                       // ナニヌネノ
    "HA", "BA", "PA",  "HI", "BI", "PI",  "FU", "BU", "PU",              // ハバパヒビピフブプ
    "HE", "BE", "PE",  "HO", "BO", "PO",                                 // ヘベペホボポ
    "MA", "MI", "MU",  "ME", "MO",                                       // マミムメモ
    "YA", "YA", "YU",  "YU", "YO", "YO",                                 // ャヤュユョヨ
    "RA", "RI", "RU",  "RE", "RO",                                       // ラリルレロ
    "WA", "WA", "I",   "E",  "O",  "N",   "VU", "GA", "GA",              // ヮワヰヱヲンヴヵヶ
};
constexpr char32_t FirstKatakana = 0x30A1;
constexpr char32_t LastKatakana = 0x30F6;
static_assert(std::size(Singles) == LastKatakana - FirstKatakana + 1);
constexpr char32_t FirstHiragana = 0x3041;
constexpr char32_t LastHiragana = 0x3096;
constexpr std::string_view DoublingTsu = "ッ";

/// The half-width katakana from U+FF66 on.
constexpr std::u32string_view HalfWidth =
    U"ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン";
constexpr char32_t FirstHalfWidth = 0xFF66;
constexpr char32_t HalfVoiced = 0xFF9E;
constexpr char32_t HalfSemiVoiced = 0xFF9F;

/// Longest first.
constexpr Reading Endings[] = {
    {"ヶ岳", "GATAKE"}, {"ケ岳", "GATAKE"}, {"ガ岳", "GATAKE"}, {"ヵ岳", "GATAKE"}, {"小屋", "GOYA"}, {"岳", "DAKE"},
    {"山", "SAN"},      {"峠", "TOGE"},     {"駅", "EKI"},      {"川", "GAWA"},     {"池", "IKE"},    {"沢", "SAWA"},
};

constexpr std::u32string_view MayBeVoiced = U"ウカキクケコサシスセソタチツテトハヒフヘホ";
constexpr std::u32string_view KanjiDigits = U"〇一二三四五六七八九";

/// The voiced one of a katakana whose mark stands behind it.
char32_t Voiced(char32_t character, char32_t mark) {
  if (character == U'ウ') return U'ヴ';
  const bool of_h = character >= U'ハ' && character <= U'ホ';
  return character + (of_h && mark == HalfSemiVoiced ? 2 : 1);
}

/// With katakana in full width, letters and digits in half.
char32_t Usual(char32_t character) {
  if (character >= FirstHiragana && character <= LastHiragana) return character + (FirstKatakana - FirstHiragana);
  if (character >= 0xFF01 && character <= 0xFF5E) return character - 0xFF01 + U'!';
  if (character == U'　') return U' ';
  if (character >= FirstHalfWidth && character < FirstHalfWidth + HalfWidth.size()) {
    return HalfWidth[character - FirstHalfWidth];
  }
  return character;
}

bool IsVoicingMark(char32_t character) {
  return character == HalfVoiced || character == HalfSemiVoiced || character == U'゛' || character == U'゜' ||
         character == 0x3099 || character == 0x309A;
}

std::string Normalised(std::string_view utf8) {
  std::u32string characters;
  while (!utf8.empty()) {
    const char32_t character = TakeCharacter(utf8);
    if (IsVoicingMark(character)) {
      const bool semi = character == HalfSemiVoiced || character == U'゜' || character == 0x309A;
      const bool voiced = !characters.empty() && MayBeVoiced.find(characters.back()) != std::u32string_view::npos;
      if (voiced) characters.back() = Voiced(characters.back(), semi ? HalfSemiVoiced : HalfVoiced);
      continue;
    }
    characters.push_back(Usual(character));
  }
  std::string normal;
  for (const char32_t character : characters)
    AppendCharacter(normal, character);
  return normal;
}

/// Takes one syllable off the front of a text; empty for what has no sound.
std::string_view TakeSyllable(std::string_view& text) {
  for (const Reading& pair : Pairs) {
    if (Take(text, pair.kana)) return pair.roman;
  }
  const std::string_view before = text;
  const char32_t character = TakeCharacter(text);
  if (character >= FirstKatakana && character <= LastKatakana) return Singles[character - FirstKatakana];
  if (character < 0x80) return before.substr(0, 1);
  constexpr std::string_view Digits = "0123456789";
  const std::size_t digit = KanjiDigits.find(character);
  return digit == std::u32string_view::npos ? std::string_view() : Digits.substr(digit, 1);
}

/// What a ッ in front of a syllable adds to it.
std::string_view Doubled(std::string_view syllable) {
  constexpr std::string_view Vowels = "AIUEON";
  if (syllable.starts_with("CH")) return "T";
  if (syllable.empty() || !IsLetter(syllable.front()) || Vowels.find(syllable.front()) != std::string_view::npos) {
    return {};
  }
  return syllable.substr(0, 1);
}

}  // namespace

std::string RomanName(std::string_view utf8) {
  const std::string normal = Normalised(utf8);
  std::string_view text = TrimBlanks(normal);
  const auto* const ending =
      std::ranges::find_if(Endings, [text](const Reading& row) { return text.ends_with(row.kana); });
  if (ending != std::end(Endings)) text.remove_suffix(ending->kana.size());
  std::string roman;
  while (!text.empty()) {
    const bool doubles = Take(text, DoublingTsu);
    if (text.empty()) break;
    const std::string_view syllable = TakeSyllable(text);
    if (doubles) roman += Doubled(syllable);
    roman += syllable;
  }
  if (ending != std::end(Endings)) roman += ending->roman;
  return UpperCase(roman);
}

}  // namespace walrim
