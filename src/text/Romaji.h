// Japanese names in capital letters.
#pragma once

#include <string>
#include <string_view>

namespace walrim {

/// A name by Hepburn's rules in capitals: kana, half-width ones and full-width letters and digits too; the usual
/// endings of places (岳 DAKE, ヶ岳 GATAKE, 山 SAN, 峠 TOGE, 小屋 GOYA, 駅 EKI, 川 GAWA, 池 IKE, 沢 SAWA), and kanji of
/// numbers as digits. A long vowel's stroke is dropped. Other kanji cannot be read and are left out; ASCII stays as it
/// is, small letters as capitals.
[[nodiscard]] std::string RomanName(std::string_view utf8);

}  // namespace walrim
