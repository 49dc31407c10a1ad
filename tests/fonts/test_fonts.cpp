// The ten display fonts the build puts in EPHE/Fonti, loaded the way the
// program loads them: each must answer to the family name the pages ask
// for, carry the script or symbols it is used for, and "Ranvel Astro" must
// show the program's mark at U+00B2.
#include <gtest/gtest.h>

#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPainterPath>
#include <QRawFont>
#include <QString>

#include <filesystem>
#include <vector>

#include "data/data_tree.h"

namespace ranvel {
namespace {

namespace fs = std::filesystem;

struct DisplayFont {
    const char* family;
    const char* base;
    char32_t letter;  // a character the font is there to show
};

const std::vector<DisplayFont> kFonts = {
    {"Ranvel Astro", "RNVASTRO", U'\u2609'},         // ☉
    {"Ranvel Bangla", "RNVBANG", U'\u0995'},         // ক
    {"Ranvel Hindi Astro", "HINASTRO", U'\u0915'},   // क
    {"Ranvel Dev Head", "RVDVHEAD", U'\u0915'},
    {"Ranvel Gujarati", "RVGUJ", U'\u0A95'},         // ક
    {"Ranvel Tamil Astro", "TMLASTRO", U'\u0B95'},   // க
    {"Ranvel Kannada Astro", "KANASTRO", U'\u0C95'}, // ಕ
    {"Ranvel Marathi Astro", "RVMTAST", U'\u0915'},
    {"Astro 570", "ASTRO570", U'\u2648'},            // ♈
    {"Astro 571", "ASTRO571", U'\u2653'},            // ♓
};

const char* const kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

fs::path FontDir()
{
    return testing::BuiltTree() / "EPHE" / "Fonti";
}

QString FontFile(const char* base)
{
    return QString::fromStdString((FontDir() / (std::string(base) + ".IFT")).string());
}

QRawFont Raw(const QString& file)
{
    return QRawFont(file, 200, QFont::PreferNoHinting);
}

QPainterPath Outline(const QRawFont& font, char32_t ch)
{
    const auto glyphs = font.glyphIndexesForString(QString::fromUcs4(&ch, 1));
    return glyphs.isEmpty() ? QPainterPath() : font.pathForGlyph(glyphs.front());
}

TEST(DisplayFonts, EachFileLoadsUnderItsFamilyAndShowsWhatItIsFor)
{
    RANVEL_REQUIRE_BUILD_TREE();
    const std::string licences = testing::Slurp(FontDir() / "FONTS-LICENCES.txt");
    EXPECT_NE(licences.find("SIL Open Font License"), std::string::npos);
    EXPECT_NE(licences.find("Bitstream Vera"), std::string::npos);

    for (const auto& f : kFonts) {
        SCOPED_TRACE(f.base);
        const QString file = FontFile(f.base);
        ASSERT_TRUE(QFile::exists(file));
        EXPECT_NE(licences.find(std::string(f.base) + ".IFT"), std::string::npos);

        const int id = QFontDatabase::addApplicationFont(file);
        ASSERT_GE(id, 0);
        EXPECT_EQ(QFontDatabase::applicationFontFamilies(id), QStringList{QString::fromUtf8(f.family)});

        const QRawFont raw = Raw(file);
        ASSERT_TRUE(raw.isValid());
        EXPECT_TRUE(raw.supportsCharacter(f.letter));
        EXPECT_FALSE(Outline(raw, f.letter).isEmpty());
    }
}

TEST(DisplayFonts, AstroFontsCarryEveryPlanetAndSign)
{
    RANVEL_REQUIRE_BUILD_TREE();
    std::vector<char32_t> symbols = {U'\u2609', U'\u263D', U'\u263F', U'\u2640',
                                     U'\u2642', U'\u2643', U'\u2644', U'\u260A', U'\u260B'};
    for (char32_t sign = U'\u2648'; sign <= U'\u2653'; ++sign) symbols.push_back(sign);

    for (const char* base : {"RNVASTRO", "ASTRO570", "ASTRO571"}) {
        const QRawFont raw = Raw(FontFile(base));
        for (char32_t ch : symbols)
            EXPECT_TRUE(raw.supportsCharacter(ch)) << base << " lacks U+" << std::hex << unsigned(ch);
    }
}

TEST(DisplayFonts, RanvelAstroShowsTheMarkAndKeepsItsFractions)
{
    RANVEL_REQUIRE_BUILD_TREE();
    const QRawFont astro = Raw(FontFile("RNVASTRO"));
    const QRawFont source = Raw(QString::fromUtf8(kDejaVuSans));
    ASSERT_TRUE(astro.isValid());
    ASSERT_TRUE(source.isValid());

    ASSERT_TRUE(astro.supportsCharacter(U'\u00B2'));
    const QPainterPath mark = Outline(astro, U'\u00B2');
    ASSERT_FALSE(mark.isEmpty());
    EXPECT_TRUE(mark != Outline(source, U'\u00B2')) << "U+00B2 still shows the superscript two";

    // As tall as a capital and standing on the baseline (y grows downwards),
    // with room to either side inside its advance.
    const QRectF box = mark.boundingRect();
    const QRectF capital = Outline(astro, U'H').boundingRect();
    EXPECT_NEAR(box.height(), capital.height(), 0.05 * capital.height());
    EXPECT_NEAR(box.bottom(), 0.0, 0.02 * capital.height());
    EXPECT_NEAR(box.width(), box.height(), 0.1 * box.height());
    const auto glyph = astro.glyphIndexesForString(QStringLiteral("\u00B2"));
    const qreal advance = astro.advancesForGlyphIndexes(glyph).front().x();
    EXPECT_GT(box.left(), 0.0);
    EXPECT_LT(box.right(), advance);

    // ½ and ⅔ are built from the source's superscript two; they must not
    // pick up the mark.
    EXPECT_TRUE(Outline(astro, U'\u00BD') == Outline(source, U'\u00BD')) << "½ differs from its source";
    EXPECT_TRUE(Outline(astro, U'\u2154') == Outline(source, U'\u2154')) << "⅔ differs from its source";
}

}  // namespace
}  // namespace ranvel

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
