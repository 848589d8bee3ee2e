#include "text/Romaji.h"

#include <gtest/gtest.h>

namespace walrim {
namespace {

struct Row {
  std::string_view name;
  std::string_view roman;
};

class Romaji : public ::testing::TestWithParam<Row> {};
TEST_P(Romaji, IsHepburnInCapitals) {
  EXPECT_EQ(RomanName(GetParam().name), GetParam().roman) << GetParam().name;
}

INSTANTIATE_TEST_SUITE_P(
    Kana, Romaji,
    ::testing::Values(Row{"あいうえお", "AIUEO"}, Row{"かきくけこ", "KAKIKUKEKO"}, Row{"さしすせそ", "SASHISUSESO"},
                      Row{"たちつてと", "TACHITSUTETO"}, Row{"なにぬねの", "NANINUNENO"},
                      Row{"はひふへほ", "HAHIFUHEHO"}, Row{"まみむめも", "MAMIMUMEMO"}, Row{"やゆよ", "YAYUYO"},
                      Row{"らりるれろ", "RARIRURERO"}, Row{"わゐゑをん", "WAIEON"}, Row{"がぎぐげご", "GAGIGUGEGO"},
                      Row{"ざじずぜぞ", "ZAJIZUZEZO"}, Row{"だぢづでど", "DAJIZUDEDO"}, Row{"ばびぶべぼ", "BABIBUBEBO"},
                      Row{"ぱぴぷぺぽ", "PAPIPUPEPO"}, Row{"カタカナ", "KATAKANA"}, Row{"きゃきゅきょ", "KYAKYUKYO"},
                      Row{"しゃしゅしょ", "SHASHUSHO"}, Row{"ちゃちゅちょ", "CHACHUCHO"}, Row{"じゃじゅじょ", "JAJUJO"},
                      Row{"りょうかみ", "RYOUKAMI"}, Row{"みゃくどう", "MYAKUDOU"}, Row{"ひょうたん", "HYOUTAN"}));

INSTANTIATE_TEST_SUITE_P(Doubled, Romaji,
                         ::testing::Values(Row{"ほっかい", "HOKKAI"}, Row{"いっちょう", "ITCHOU"},
                                           Row{"ざっし", "ZASSHI"}, Row{"キャッスル", "KYASSURU"}, Row{"あっ", "A"},
                                           Row{"っ", ""}, Row{"ッア", "A"}, Row{"ッッカ", "KA"}));

INSTANTIATE_TEST_SUITE_P(Foreign, Romaji,
                         ::testing::Values(Row{"ヴァレー", "VARE"}, Row{"ヴ", "VU"}, Row{"ファミリー", "FAMIRI"},
                                           Row{"ティー", "TI"}, Row{"ウォーク", "WOKU"}, Row{"チェック", "CHEKKU"},
                                           Row{"ジェット", "JETTO"}, Row{"スキー", "SUKI"}));

INSTANTIATE_TEST_SUITE_P(Widths, Romaji,
                         ::testing::Values(Row{"ﾀｶｵ", "TAKAO"}, Row{"ﾄｻﾞﾝｸﾞﾁ", "TOZANGUCHI"}, Row{"ﾊﾟｰｷﾝｸﾞ", "PAKINGU"},
                                           Row{"ｳﾞｧﾚｰ", "VARE"}, Row{"ｷｬﾝﾌﾟ", "KYANPU"}, Row{"Ａｂｃ１２３", "ABC123"},
                                           Row{"ﾎｯｶｲ", "HOKKAI"}, Row{"ﾞ", ""}, Row{"ｱﾞ", "A"}));

INSTANTIATE_TEST_SUITE_P(Endings, Romaji,
                         ::testing::Values(Row{"ほたか岳", "HOTAKADAKE"}, Row{"やつヶ岳", "YATSUGATAKE"},
                                           Row{"やりケ岳", "YARIGATAKE"}, Row{"たかお山", "TAKAOSAN"},
                                           Row{"みつ峠", "MITSUTOGE"}, Row{"やり小屋", "YARIGOYA"},
                                           Row{"たかお駅", "TAKAOEKI"}, Row{"たま川", "TAMAGAWA"},
                                           Row{"たしろ池", "TASHIROIKE"}, Row{"から沢", "KARASAWA"},
                                           Row{"三ツ峠", "3TSUTOGE"}, Row{"八合目", "8"}, Row{"霧ヶ峰", "GA"},
                                           Row{"高尾山", "SAN"}, Row{"山", "SAN"}, Row{"岳", "DAKE"},
                                           Row{"小屋", "GOYA"}, Row{"北穂高岳", "DAKE"}, Row{"たかお", "TAKAO"}));

INSTANTIATE_TEST_SUITE_P(Ascii, Romaji,
                         ::testing::Values(Row{"Takao 599m", "TAKAO 599M"}, Row{"", ""}, Row{" A ", "A"},
                                           Row{"高尾01", "01"}, Row{"\xFF", ""}));

}  // namespace
}  // namespace walrim
