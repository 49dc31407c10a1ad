// The manual's own window: one window for every request, at the page asked
// for; links, back and forward inside it; contents that follow the page; a
// search that lists the pages holding every word and marks them; the
// pages' pictures drawn and fitted to the window; manual.css's look; and a
// missing page said so without an empty window or a crash.
#include <QAbstractTextDocumentLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextList>
#include <QTextTable>
#include <QTreeWidget>
#include <fstream>

#include "app/app_fixture.h"
#include "ranvel/app/frmHelp.h"
#include "ranvel/app/mdiMother.h"

namespace ranvel::test {
namespace {

namespace fs = std::filesystem;

class HelpWindowTest : public AppTest {
protected:
    void SetUp() override
    {
        AppTest::SetUp();
        if (IsSkipped()) return;
        const fs::path built = testing::BuiltTree() / "HELP";
        if (!fs::is_regular_file(built / "index.html")) GTEST_SKIP() << "the build made no manual";
        // A manual of the test's own, to change at will.
        fs::remove(app / "HELP");
        fs::copy(built, app / "HELP", fs::copy_options::recursive);
    }
    void TearDown() override
    {
        // The window has no parent: the fixture deletes it with the others.
        AppTest::TearDown();
        EXPECT_EQ(HelpWindow(), nullptr);
    }

    frmHelp* Help() { return HelpWindow(); }
    QTextBrowser* Page() { return Help()->rtfPage(); }
    template <typename T = QWidget>
    T* Find(const char* name)
    {
        return Child<T>(Help(), name);
    }
    static void Settle()
    {
        for (int i = 0; i < 3; ++i) QApplication::processEvents();
    }
    void Write(const char* file, const std::string& html) { std::ofstream(app / "HELP" / file) << html; }

    // Clicks the link whose words are these, as the user does.
    void ClickLink(const QString& words)
    {
        const QTextCursor found = Page()->document()->find(words);
        ASSERT_FALSE(found.isNull()) << words.toStdString();
        ASSERT_TRUE(found.charFormat().isAnchor()) << words.toStdString();
        QTextCursor middle(Page()->document());
        middle.setPosition((found.selectionStart() + found.selectionEnd()) / 2);
        Page()->setTextCursor(middle);
        Page()->ensureCursorVisible();
        QTest::mouseClick(Page()->viewport(), Qt::LeftButton, {}, Page()->cursorRect(middle).center());
        Settle();
    }
    void Click(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    void ClickItem(QTreeWidgetItem* item)
    {
        auto* tree = Find<QTreeWidget>("tvContents");
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
        Settle();
    }
    int Scrolled() { return Page()->verticalScrollBar()->value(); }

    // The page's images with the size they are drawn at.
    std::vector<std::pair<QString, QSize>> Images()
    {
        std::vector<std::pair<QString, QSize>> found;
        for (QTextBlock b = Page()->document()->begin(); b.isValid(); b = b.next())
            for (auto it = b.begin(); !it.atEnd(); ++it)
                if (it.fragment().charFormat().isImageFormat()) {
                    const QTextImageFormat f = it.fragment().charFormat().toImageFormat();
                    found.emplace_back(f.name(), QSize(qRound(f.width()), qRound(f.height())));
                }
        return found;
    }
    int FrmHelpWindows()
    {
        int n = 0;
        for (QWidget* w : QApplication::topLevelWidgets()) n += qobject_cast<frmHelp*>(w) && !w->isHidden();
        return n;
    }
};

TEST_F(HelpWindowTest, TheMenuAndF1OpenOneWindowOfItsOwnAtThePageAsked)
{
    auto* main = new mdiMother;
    main->show();
    main->Action("mnuHelpContents")->trigger();
    ASSERT_NE(Help(), nullptr);
    frmHelp* help = Help();
    EXPECT_TRUE(help->isVisible() && help->isWindow());
    EXPECT_EQ(help->CurrentPage(), "index.html");
    EXPECT_EQ(help->windowTitle(), "Ranvel manual: contents");
    // It fits a screen of 1024 by 768 with its frame, and the program ends
    // with the main window whether or not it is open.
    EXPECT_LE(help->width(), 1000);
    EXPECT_LE(help->height(), 720);
    EXPECT_FALSE(help->testAttribute(Qt::WA_QuitOnClose));

    // F1 and Search Help On... bring the same window to the keyword index.
    QTest::keyClick(main, Qt::Key_F1);
    EXPECT_EQ(Help(), help);
    EXPECT_EQ(help->CurrentPage(), "keywords.html");
    help->Open("index.html");
    main->Action("mnuHelpSearch")->trigger();
    Settle();
    EXPECT_EQ(Help(), help);
    EXPECT_EQ(help->CurrentPage(), "keywords.html");
    EXPECT_EQ(FrmHelpWindows(), 1);
    // Nothing was handed to the desktop, and nothing was said.
    EXPECT_TRUE(dialogs.opened.empty());
    EXPECT_TRUE(messages.Messages().empty());

    // Closed, it is made anew at the next request.
    help->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(Help(), nullptr);
    main->Action("mnuHelpContents")->trigger();
    ASSERT_NE(Help(), nullptr);
    EXPECT_EQ(Help()->CurrentPage(), "index.html");
}

TEST_F(HelpWindowTest, LinksBackAndForwardStayInTheWindow)
{
    ASSERT_TRUE(ShowManual("index.html"));
    EXPECT_FALSE(Find("cmdBack")->isEnabled());
    ClickLink("The fourteen categories");
    EXPECT_EQ(Help()->CurrentPage(), "request.html");
    EXPECT_EQ(Page()->source().fragment(), "categories");
    EXPECT_GT(Scrolled(), 0);  // at the section, not the page's top
    EXPECT_TRUE(Find("cmdBack")->isEnabled());
    EXPECT_FALSE(Find("cmdForward")->isEnabled());

    Click("cmdBack");
    EXPECT_EQ(Help()->CurrentPage(), "index.html");
    EXPECT_TRUE(Find("cmdForward")->isEnabled());
    Click("cmdForward");
    EXPECT_EQ(Help()->CurrentPage(), "request.html");
    Click("cmdIndex");
    EXPECT_EQ(Help()->CurrentPage(), "keywords.html");
    Click("cmdHome");
    EXPECT_EQ(Help()->CurrentPage(), "index.html");
    EXPECT_TRUE(dialogs.opened.empty());
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(HelpWindowTest, TheContentsListTheManualsPagesAndFollowThePageShown)
{
    ASSERT_TRUE(ShowManual("index.html"));
    auto* tree = Find<QTreeWidget>("tvContents");
    QStringList pages;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) pages << tree->topLevelItem(i)->text(0);
    EXPECT_EQ(pages, (QStringList{"Contents", "Making a request", "The result", "Persons", "Settings", "Files",
                                  "Troubleshooting", "Keyword index"}));

    QTreeWidgetItem* result = tree->topLevelItem(2);
    ClickItem(result);
    EXPECT_EQ(Help()->CurrentPage(), "results.html");
    EXPECT_EQ(Scrolled(), 0);
    QTreeWidgetItem* printing = nullptr;
    for (int i = 0; i < result->childCount(); ++i)
        if (result->child(i)->text(0) == "Printing") printing = result->child(i);
    ASSERT_NE(printing, nullptr);
    ClickItem(printing);
    EXPECT_EQ(Page()->source().fragment(), "printing");
    EXPECT_GT(Scrolled(), 0);

    // A page reached another way is marked in the contents.
    Help()->Open("settings.html#places");
    EXPECT_EQ(tree->currentItem()->text(0), "Cities and countries");
    EXPECT_EQ(tree->currentItem()->parent(), tree->topLevelItem(4));
    Help()->Open("keywords.html");
    EXPECT_EQ(tree->currentItem(), tree->topLevelItem(7));
}

TEST_F(HelpWindowTest, TheSearchListsThePagesHoldingEveryWordAndMarksThemOnThePage)
{
    // A manual of three pages; the bar at the top of each names them all,
    // and its words count for none.
    const std::string bar = R"(<header class="masthead"><nav class="top"><ul><li><a href="index.html">Start</a></li>
        <li><a href="print.html">Printing</a></li><li><a href="mail.html">Mail</a></li></ul></nav></header>)";
    Write("index.html", "<html><body>" + bar + "<h1>Start</h1><p>Colours and themes.</p></body></html>");
    std::string filler;
    for (int i = 0; i < 80; ++i) filler += "<p>Nothing to find here.</p>";
    Write("print.html", "<html><body>" + bar + "<h1>Printing</h1><p>Print the report.</p>" + filler +
                            "<p>A reprint.</p></body></html>");
    Write("mail.html", "<html><body>" + bar + "<h1>Mail</h1><p>A theme, a theme, a Theme colour.</p></body></html>");
    ASSERT_TRUE(ShowManual("index.html"));

    auto pages = [](const std::vector<frmHelp::Found>& found) {
        QStringList p;
        for (const frmHelp::Found& f : found) p << QString("%1 %2").arg(f.page).arg(f.hits);
        return p;
    };
    // Every word at the start of a word of the page, whatever its case; the
    // most hits first, then in the contents' order.
    EXPECT_EQ(pages(Help()->Search("theme")), (QStringList{"mail.html 3", "index.html 1"}));
    EXPECT_EQ(pages(Help()->Search("PRINT, report")), (QStringList{"print.html 3"}));
    EXPECT_EQ(pages(Help()->Search("reprint")), (QStringList{"print.html 1"}));
    EXPECT_TRUE(Help()->Search("theme zebra").empty());
    EXPECT_TRUE(Help()->Search(" ,. ").empty());

    // As the user searches: the list, its words, a click on a page found.
    auto* box = Find<QLineEdit>("txtSearch");
    auto* list = Find<QListWidget>("lstFound");
    box->setText("colour theme");
    QTest::keyClick(box, Qt::Key_Return);
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), "Mail");
    EXPECT_EQ(list->item(1)->text(), "Start");
    EXPECT_EQ(Find<QLabel>("lblFound")->text(), "2 pages hold these words:");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(Help()->CurrentPage(), "mail.html");
    EXPECT_EQ(Help()->MarkedCount(), 4);
    for (const QTextEdit::ExtraSelection& s : Page()->extraSelections())
        EXPECT_TRUE(QStringList({"theme", "colour"}).contains(s.cursor.selectedText().toLower()));

    // Words far down the page are brought into view.
    box->setText("reprint");
    QTest::keyClick(Find<QPushButton>("cmdSearch"), Qt::Key_Space);
    ASSERT_EQ(list->count(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(Help()->CurrentPage(), "print.html");
    ASSERT_EQ(Help()->MarkedCount(), 1);
    EXPECT_GT(Scrolled(), 0);
    const QRect mark = Page()->cursorRect(Page()->extraSelections()[0].cursor);
    EXPECT_TRUE(Page()->viewport()->rect().contains(mark)) << mark.y();

    // Another page, and the marks are gone.
    Click("cmdHome");
    EXPECT_EQ(Help()->MarkedCount(), 0);
    box->setText("zebra");
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(list->count(), 0);
    EXPECT_EQ(Find<QLabel>("lblFound")->text(), "No page holds all these words.");
}

TEST_F(HelpWindowTest, ThePicturesAreDrawnAndFitTheWindow)
{
    ASSERT_TRUE(ShowManual("results.html"));
    Help()->resize(1024, 768);
    Settle();
    std::ifstream in(app / "HELP" / "results.html");
    const std::string source((std::istreambuf_iterator<char>(in)), {});
    int pictures = 0;
    for (std::size_t at = source.find("<svg"); at != std::string::npos; at = source.find("<svg", at + 1)) ++pictures;

    auto check = [&] {
        const auto images = Images();
        // Every picture of the page but the mark in the bar at its top.
        EXPECT_EQ(static_cast<int>(images.size()), pictures - 1);
        const int room = Page()->viewport()->width();
        int figures = 0;
        for (const auto& [name, size] : images) {
            const QImage drawn = Page()->document()->resource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
            ASSERT_FALSE(drawn.isNull()) << name.toStdString();
            EXPECT_EQ(drawn.deviceIndependentSize().toSize(), size) << name.toStdString();
            long ink = 0;
            for (int y = 0; y < drawn.height(); ++y)
                for (int x = 0; x < drawn.width(); ++x) ink += qAlpha(drawn.pixel(x, y)) > 0;
            EXPECT_GT(ink, drawn.width() * drawn.height() / 50) << name.toStdString();
            if (size == QSize(28, 28)) continue;
            ++figures;
            EXPECT_LT(size.width(), room) << name.toStdString();
        }
        EXPECT_GE(figures, 3);
    };
    check();
    const int wide = Images().front().second.width();
    Help()->resize(700, 500);
    Settle();
    check();
    EXPECT_LT(Images().front().second.width(), wide);
}

TEST_F(HelpWindowTest, TheManualsStyleComesThroughAndItsBarIsLeftOut)
{
    ASSERT_TRUE(ShowManual("settings.html"));
    QTextDocument* doc = Page()->document();
    const QColor indigo("#2b3a67");
    // The heading's colour is manual.css's indigo, given there by name.
    EXPECT_TRUE(doc->toPlainText().startsWith("Settings\n"));
    EXPECT_EQ(doc->find("Settings").charFormat().foreground().color(), indigo);
    const QTextCursor head = doc->find("Menu item");
    ASSERT_NE(head.currentTable(), nullptr);
    EXPECT_EQ(head.currentTable()->cellAt(head).format().background().color(), indigo);
    // The steps keep numbers, though the sheet draws its own in circles.
    const QTextCursor step = doc->find("To change a city");
    ASSERT_NE(step.block().textList(), nullptr);
    EXPECT_EQ(step.block().textList()->format().style(), QTextListFormat::ListDecimal);

    // Words meant for screen readers alone are not shown: the head of the
    // pictures' column in the table of categories is empty.
    Help()->Open("request.html");
    QTextTable* categories = nullptr;
    for (QTextBlock b = Page()->document()->begin(); b.isValid() && !categories; b = b.next()) {
        QTextTable* t = QTextCursor(b).currentTable();
        if (t && t->columns() > 1 && t->cellAt(0, 1).firstCursorPosition().block().text() == "Button") categories = t;
    }
    ASSERT_NE(categories, nullptr);
    EXPECT_EQ(categories->cellAt(0, 0).firstCursorPosition().block().text(), "");
}

TEST_F(HelpWindowTest, AMissingPageIsSaidSoAndTheWindowStaysAsItWas)
{
    fs::remove(app / "HELP" / "keywords.html");
    EXPECT_FALSE(ShowManual("keywords.html"));
    ASSERT_EQ(messages.Messages().size(), 1u);
    EXPECT_EQ(messages.Messages()[0].icon, MsgIcon::Exclamation);
    EXPECT_NE(messages.Messages()[0].text.find("keywords.html"), std::string::npos);
    EXPECT_EQ(Help(), nullptr);  // no empty window

    ASSERT_TRUE(ShowManual("index.html"));
    ClickLink("Keyword index");
    EXPECT_EQ(messages.Messages().size(), 2u);
    EXPECT_EQ(Help()->CurrentPage(), "index.html");
    EXPECT_FALSE(Help()->Open("keywords.html"));
    EXPECT_EQ(Help()->CurrentPage(), "index.html");

    // The whole manual gone: the menu says so, and the program goes on.
    Help()->close();
    fs::remove_all(app / "HELP");
    auto* main = new mdiMother;
    main->Action("mnuHelpContents")->trigger();
    QTest::keyClick(main, Qt::Key_F1);
    EXPECT_EQ(messages.Messages().size(), 5u);
    EXPECT_TRUE(dialogs.opened.empty());
}

}  // namespace
}  // namespace ranvel::test
