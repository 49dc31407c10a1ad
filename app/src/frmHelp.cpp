#include "ranvel/app/frmHelp.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QSplitter>
#include <QSvgRenderer>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTreeWidget>
#include <QUrlQuery>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <map>

#include "ranvel/app/appinfo.h"
#include "ranvel/app/formkit.h"
#include "ranvel/platform/apppaths.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"

namespace ranvel {

namespace {

// The manual draws its pictures as SVG inside its pages, which the text
// view does not draw. Each is taken out of its page and stands there as an
// image of this scheme, named by page and number ("results.html/2"), that
// the view asks the window to draw.
const QString kPictureScheme = QStringLiteral("ranvel-svg");
// A picture beside a word in a table (class "icon") is this many pixels
// square; the others, the figures, take the width of the page up to their
// own.
constexpr int kIconSize = 28;
// The page's margin in the view, in pixels.
constexpr int kPageMargin = 14;

constexpr auto kSpan = QRegularExpression::DotMatchesEverythingOption | QRegularExpression::CaseInsensitiveOption;

struct Picture {
    QByteArray svg;  // a document of its own
    QSizeF box;      // the size its viewBox gives
    bool icon = false;
};

QString HelpPath(const QString& file) { return Q(AppPath("HELP/" + S(file))); }

QString ReadText(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(f.readAll());
}

QString Attribute(const QString& tag, const char* name)
{
    const QRegularExpression re(QStringLiteral("\\b%1\\s*=\\s*\"([^\"]*)\"").arg(QLatin1String(name)),
                                QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = re.match(tag);
    return m.hasMatch() ? m.captured(1) : QString();
}

// The words of a piece of HTML, its tags and entities resolved.
QString PlainText(const QString& html) { return QTextDocumentFragment::fromHtml(html).toPlainText().simplified(); }

// Every match of a pattern replaced by what `with` makes of it.
template <typename F>
QString ReplaceEach(const QString& text, const QRegularExpression& re, F with)
{
    QString out;
    qsizetype at = 0;
    for (auto it = re.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out += QStringView(text).mid(at, m.capturedStart() - at);
        out += with(m);
        at = m.capturedEnd();
    }
    out += QStringView(text).mid(at);
    return out;
}

QSize PictureSize(const Picture& p, int figureWidth)
{
    if (p.icon || p.box.isEmpty()) return {kIconSize, kIconSize};
    const int w = std::min(figureWidth, static_cast<int>(p.box.width()));
    return {w, static_cast<int>(w * p.box.height() / p.box.width() + 0.5)};
}

QString PictureName(const QString& key, QSize size)
{
    return QStringLiteral("%1:%2?w=%3&h=%4").arg(kPictureScheme, key).arg(size.width()).arg(size.height());
}

// A page of the manual as the view shows it. The bar at the top of every
// page is left out (the window has its contents at the side) and so are the
// words meant only for screen readers; the pictures become images; the row
// of index letters, the figures and the links to the pages before and after
// are put in forms the view draws.
QString ScreenPage(QString html, const QString& page, std::map<QString, Picture>& pictures, int figureWidth)
{
    static const QRegularExpression masthead(R"re(<header\b[^>]*\bclass="masthead"[^>]*>.*?</header>)re", kSpan);
    static const QRegularExpression readerOnly(R"re(<span\b[^>]*\bclass="visually-hidden"[^>]*>.*?</span>)re", kSpan);
    static const QRegularExpression svg(R"re(<svg\b([^>]*)>(.*?)</svg>)re", kSpan);
    static const QRegularExpression familyList(R"re(font-family="([^",]+)\s*,[^"]*")re");
    static const QRegularExpression letters(R"re(<ul\b[^>]*\bclass="letters"[^>]*>(.*?)</ul>)re", kSpan);
    static const QRegularExpression item(R"re(<li\b[^>]*>(.*?)</li>)re", kSpan);
    static const QRegularExpression figure(R"re(<figure\b([^>]*)>)re", kSpan);
    static const QRegularExpression pager(R"re(<nav\b[^>]*\bclass="pager"[^>]*>(.*?)</nav>)re", kSpan);
    static const QRegularExpression link(R"re(<a\b[^>]*>.*?</a>)re", kSpan);
    static const QRegularExpression sheet(R"re(<link\b([^>]*\brel="stylesheet"[^>]*)>)re", kSpan);

    // The view reads a linked style sheet only when its type is given.
    html = ReplaceEach(html, sheet, [](const QRegularExpressionMatch& m) {
        return m.captured(1).contains("type=") ? m.captured(0) : R"(<link type="text/css")" + m.captured(1) + ">";
    });
    html.remove(masthead);
    html.remove(readerOnly);

    int n = 0;
    html = ReplaceEach(html, svg, [&](const QRegularExpressionMatch& m) {
        QString attributes = m.captured(1);
        Picture p;
        const QStringList box =
            Attribute(attributes, "viewBox").split(QRegularExpression("[\\s,]+"), Qt::SkipEmptyParts);
        if (box.size() == 4) p.box = QSizeF(box[2].toDouble(), box[3].toDouble());
        p.icon = Attribute(attributes, "class").split(' ').contains("icon");
        // The renderer takes one family, not the list a browser falls back
        // through; the first is one the program installs.
        QString body = m.captured(2);
        body.replace(familyList, R"(font-family="\1")");
        if (!attributes.contains("xmlns")) attributes.prepend(R"( xmlns="http://www.w3.org/2000/svg")");
        p.svg = ("<svg" + attributes + ">" + body + "</svg>").toUtf8();
        const QString key = page + "/" + QString::number(++n);
        const QSize size = PictureSize(p, figureWidth);
        pictures[key] = p;
        return QStringLiteral(R"(<img src="%1" width="%2" height="%3" alt="%4"%5>)")
            .arg(PictureName(key, size).toHtmlEscaped())
            .arg(size.width())
            .arg(size.height())
            .arg(Attribute(attributes, "aria-label"), p.icon ? QStringLiteral(R"( align="middle")") : QString());
    });

    html = ReplaceEach(html, letters, [](const QRegularExpressionMatch& m) {
        QStringList entries;
        for (auto it = item.globalMatch(m.captured(1)); it.hasNext();) entries << it.next().captured(1);
        return R"(<p class="letters">)" + entries.join("&nbsp;&nbsp; ") + "</p>";
    });
    html = ReplaceEach(html, figure, [](const QRegularExpressionMatch& m) {
        return R"(<div class="figure")" + m.captured(1) + ">";
    });
    html.replace("</figure>", "</div>", Qt::CaseInsensitive);
    html.replace("<figcaption>", R"(<p class="figcaption">)", Qt::CaseInsensitive);
    html.replace("</figcaption>", "</p>", Qt::CaseInsensitive);
    html = ReplaceEach(html, pager, [](const QRegularExpressionMatch& m) {
        QString back, next;
        for (auto it = link.globalMatch(m.captured(1)); it.hasNext();) {
            const QString a = it.next().captured(0);
            (a.contains("&larr;") ? back : next) += a;
        }
        return R"(<table class="pager" width="100%"><tr><td>)" + back + R"(</td><td align="right">)" + next +
               "</td></tr></table>";
    });
    return html;
}

// What the view draws of manual.css's rules, and plainer forms of what it
// can't: the faces by their first name, denser lists for the contents and
// the index, the figures' spacing (a picture is a line of its own, which
// the page's line height would stretch).
const char* const kScreenRules = R"css(
body { font-family: "DejaVu Serif"; font-size: 16px; }
h1, h2, h3, h4, caption, thead th, .ui, samp { font-family: "DejaVu Sans"; }
h1 { font-size: 28px; }
h2 { font-size: 21px; margin-top: 28px; }
h3 { font-size: 17px; margin-top: 20px; }
kbd, code, pre { font-family: "DejaVu Sans Mono"; }
pre { font-size: 13px; }
.lead { font-size: 17px; }
p.letters { font-family: "DejaVu Sans"; font-weight: bold; font-size: 15px; }
.note, .tip, .warn { margin-top: 16px; margin-bottom: 16px; padding: 8px; }
div.figure { margin-top: 16px; margin-bottom: 8px; line-height: 100%; }
p.figcaption { font-size: 14px; color: var(--muted); margin-bottom: 20px; line-height: 140%; }
li { margin-top: 0px; margin-bottom: 0px; }
.index li, ol.contents li { line-height: 130%; }
table.pager { margin-top: 36px; font-family: "DejaVu Sans"; font-size: 14px; }
th, td { padding: 5px; }
)css";

// Skips a block in braces that starts at `from` (its "{"); gives the index
// after its closing brace.
qsizetype SkipBlock(const QString& css, qsizetype from)
{
    int depth = 0;
    for (qsizetype i = from; i < css.size(); ++i) {
        if (css[i] == '{') ++depth;
        else if (css[i] == '}' && --depth == 0) return i + 1;
    }
    return css.size();
}

// manual.css as the text view reads it. The view knows no custom
// properties: each var(--name) takes the value the sheet's :root gives it.
// At-rules (paper, narrow screens) and rules on selectors the view doesn't
// know (pseudo-elements, nth-child, :root) are left out, so that none of
// them can stop the view reading the rest. kScreenRules follow, and win.
// A list numbered by counters loses its "list-style: none", which the view
// would keep over any later rule.
QString ScreenStyle(const QString& manualCss)
{
    static const QRegularExpression comment(R"re(/\*.*?\*/)re", kSpan);
    static const QRegularExpression property(R"re((--[\w-]+)\s*:\s*([^;]+);)re");
    static const QRegularExpression use(R"re(var\(\s*(--[\w-]+)\s*\))re");
    static const QRegularExpression listStyle(R"re(list-style\s*:[^;}]*;?)re");
    QString css = manualCss;
    css.remove(comment);

    std::map<QString, QString> values;
    QString kept;
    for (qsizetype at = 0; at < css.size();) {
        const qsizetype open = css.indexOf('{', at);
        if (open < 0) break;
        const QString selector = css.mid(at, open - at).trimmed();
        const qsizetype end = SkipBlock(css, open);
        const QString block = css.mid(open, end - open);
        at = end;
        if (selector == ":root") {
            for (auto it = property.globalMatch(block); it.hasNext();) {
                const QRegularExpressionMatch m = it.next();
                values[m.captured(1)] = m.captured(2).trimmed();
            }
            continue;
        }
        if (selector.startsWith('@') || selector.contains("::") || selector.contains(":nth") ||
            selector.contains(":root"))
            continue;
        // A list that draws its own numbers (counters in circles) gets the
        // view's plain ones instead.
        QString declarations = block;
        if (declarations.contains("counter-reset")) declarations.remove(listStyle);
        kept += selector + " " + declarations + "\n";
    }
    return ReplaceEach(kept + kScreenRules, use, [&](const QRegularExpressionMatch& m) {
        const auto v = values.find(m.captured(1));
        return v == values.end() ? QString("inherit") : v->second;
    });
}

// The view: the manual's pages, their pictures and their style sheet come
// from the window's own reading of HELP.
class HelpBrowser : public QTextBrowser {
public:
    explicit HelpBrowser(QWidget* parent) : QTextBrowser(parent)
    {
        setObjectName("rtfPage");
        setOpenExternalLinks(false);
        document()->setDocumentMargin(kPageMargin);
    }

    // The width a figure may take in the view now.
    int FigureWidth() const
    {
        return std::max(160, viewport()->width() - 2 * kPageMargin - verticalScrollBar()->sizeHint().width());
    }

    // Called for a page the view can't show; the view stays where it is.
    std::function<void(const QUrl&)> missing;

protected:
    QVariant loadResource(int type, const QUrl& name) override
    {
        if (name.scheme() == kPictureScheme) return Draw(name);
        if (type == QTextDocument::HtmlResource && name.isLocalFile()) {
            const QString path = name.toLocalFile();
            return ScreenPage(ReadText(path), QFileInfo(path).fileName(), pictures_, FigureWidth());
        }
        if (type == QTextDocument::StyleSheetResource && name.isLocalFile())
            return ScreenStyle(ReadText(name.toLocalFile()));
        return QTextBrowser::loadResource(type, name);
    }

    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override
    {
        // Only the manual's own files: a link elsewhere, or to a page that
        // has gone, leaves the page shown.
        if (!url.isLocalFile() || !QFileInfo(url.toLocalFile()).isFile()) {
            if (missing) missing(url);
            return;
        }
        QTextBrowser::doSetSource(url, type);
    }

    void resizeEvent(QResizeEvent* e) override
    {
        QTextBrowser::resizeEvent(e);
        Refit();
    }

private:
    QImage Draw(const QUrl& name) const
    {
        const auto p = pictures_.find(name.path());
        if (p == pictures_.end()) return {};
        const QUrlQuery query(name);
        const QSize size(query.queryItemValue("w").toInt(), query.queryItemValue("h").toInt());
        if (size.isEmpty()) return {};
        const qreal ratio = devicePixelRatioF();
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        image.setDevicePixelRatio(ratio);
        QSvgRenderer svg(p->second.svg);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        svg.render(&painter, QRectF(QPointF(0, 0), QSizeF(size)));
        return image;
    }

    // The figures follow the width of the view.
    void Refit()
    {
        const int width = FigureWidth();
        struct Change {
            int at;
            QTextImageFormat format;
        };
        std::vector<Change> changes;
        for (QTextBlock b = document()->begin(); b.isValid(); b = b.next()) {
            for (auto it = b.begin(); !it.atEnd(); ++it) {
                const QTextFragment f = it.fragment();
                if (!f.charFormat().isImageFormat()) continue;
                QTextImageFormat image = f.charFormat().toImageFormat();
                const QUrl name(image.name());
                const auto p = pictures_.find(name.path());
                if (name.scheme() != kPictureScheme || p == pictures_.end() || p->second.icon) continue;
                const QSize size = PictureSize(p->second, width);
                if (qRound(image.width()) == size.width()) continue;
                image.setName(PictureName(name.path(), size));
                image.setWidth(size.width());
                image.setHeight(size.height());
                for (int i = 0; i < f.length(); ++i) changes.push_back({f.position() + i, image});
            }
        }
        for (const Change& c : changes) {
            QTextCursor cursor(document());
            cursor.setPosition(c.at);
            cursor.setPosition(c.at + 1, QTextCursor::KeepAnchor);
            cursor.setCharFormat(c.format);
        }
    }

    std::map<QString, Picture> pictures_;
};

// A page of the contents: its file, its name, its sections.
struct ContentsPage {
    QString file, title;
    std::vector<std::pair<QString, QString>> sections;  // anchor, heading
};

// The manual's pages in the order of the bar at the top of its first page,
// each with its sections; without that bar, every page of HELP by name.
std::vector<ContentsPage> ReadContents()
{
    static const QRegularExpression bar(R"re(<nav\b[^>]*\bclass="top"[^>]*>(.*?)</nav>)re", kSpan);
    static const QRegularExpression link(R"re(<a\b[^>]*\bhref="([^"#]+)"[^>]*>(.*?)</a>)re", kSpan);
    static const QRegularExpression title(R"re(<title>(.*?)</title>)re", kSpan);
    static const QRegularExpression section(R"re(<h2\b[^>]*\bid="([^"]+)"[^>]*>(.*?)</h2>)re", kSpan);

    std::vector<ContentsPage> pages;
    const QRegularExpressionMatch top = bar.match(ReadText(HelpPath("index.html")));
    for (auto it = link.globalMatch(top.captured(1)); top.hasMatch() && it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        pages.push_back({m.captured(1), PlainText(m.captured(2)), {}});
    }
    if (pages.empty()) {
        const QDir help(HelpPath("."));
        for (const QString& f : help.entryList({"*.html"}, QDir::Files, QDir::Name)) {
            const QString t = PlainText(title.match(ReadText(help.filePath(f))).captured(1));
            pages.push_back({f, t.isEmpty() ? f : t, {}});
        }
    }
    for (ContentsPage& p : pages) {
        for (auto it = section.globalMatch(ReadText(HelpPath(p.file))); it.hasNext();) {
            const QRegularExpressionMatch m = it.next();
            const QString heading = PlainText(m.captured(2));
            // The keyword index's letters are no sections to list.
            if (heading.size() > 1) p.sections.emplace_back(m.captured(1), heading);
        }
    }
    return pages;
}

// The words of a search: letters and digits, in the order typed.
QStringList SearchWords(const QString& text)
{
    static const QRegularExpression apart(R"re([^\w]+)re", QRegularExpression::UseUnicodePropertiesOption);
    QStringList words = text.split(apart, Qt::SkipEmptyParts);
    words.removeDuplicates();
    return words;
}

QRegularExpression WordStart(const QString& word)
{
    return QRegularExpression("\\b" + QRegularExpression::escape(word),
                              QRegularExpression::CaseInsensitiveOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

QPointer<frmHelp> g_help;

void NoManual(const QString& path)
{
    MsgBox("The manual could not be opened: the file " + S(QDir::toNativeSeparators(path)) + " is missing.",
           MsgButtons::OK, AppTitle(), MsgIcon::Exclamation);
}

}  // namespace

struct frmHelp::Impl {
    frmHelp* form = nullptr;
    HelpBrowser* page = nullptr;
    QTabWidget* tabNav = nullptr;
    QTreeWidget* tvContents = nullptr;
    QLineEdit* txtSearch = nullptr;
    QLabel* lblFound = nullptr;
    QListWidget* lstFound = nullptr;
    QPushButton* cmdBack = nullptr;
    QPushButton* cmdForward = nullptr;

    std::vector<ContentsPage> contents;
    // Each page's words, read once, for the search.
    std::map<QString, QString> texts;
    // The words of the last search, marked on a page opened from its list.
    QStringList searched;
    bool marking = false;

    const QString& Text(const QString& file)
    {
        auto t = texts.find(file);
        if (t == texts.end()) {
            std::map<QString, Picture> none;
            QTextDocument doc;
            doc.setHtml(ScreenPage(ReadText(HelpPath(file)), file, none, 0));
            t = texts.emplace(file, doc.toPlainText()).first;
        }
        return t->second;
    }

    void FillContents()
    {
        contents = ReadContents();
        tvContents->clear();
        for (const ContentsPage& p : contents) {
            auto* top = new QTreeWidgetItem(tvContents, {p.title});
            top->setData(0, Qt::UserRole, p.file);
            for (const auto& [anchor, heading] : p.sections) {
                auto* s = new QTreeWidgetItem(top, {heading});
                s->setData(0, Qt::UserRole, p.file + "#" + anchor);
            }
        }
    }

    // The contents follow the page shown: its section, else the page.
    void FollowPage(const QUrl& url)
    {
        const QString file = QFileInfo(url.toLocalFile()).fileName();
        const QString here = url.hasFragment() ? file + "#" + url.fragment() : file;
        QTreeWidgetItem* found = nullptr;
        for (int i = 0; i < tvContents->topLevelItemCount() && !found; ++i) {
            QTreeWidgetItem* top = tvContents->topLevelItem(i);
            if (top->data(0, Qt::UserRole).toString().compare(file, Qt::CaseInsensitive) != 0) continue;
            found = top;
            for (int j = 0; j < top->childCount(); ++j)
                if (top->child(j)->data(0, Qt::UserRole).toString() == here) found = top->child(j);
        }
        const QSignalBlocker quiet(tvContents);
        if (found) {
            tvContents->setCurrentItem(found);
            tvContents->scrollToItem(found);
        } else {
            tvContents->clearSelection();
        }
    }

    void PageShown(const QUrl& url)
    {
        form->setWindowTitle(page->documentTitle().isEmpty() ? Q(AppTitle()) + " Manual" : page->documentTitle());
        if (!marking) page->setExtraSelections({});
        FollowPage(url);
    }

    void RunSearch()
    {
        const std::vector<Found> found = form->Search(txtSearch->text());
        lstFound->clear();
        for (const Found& f : found) {
            auto* item = new QListWidgetItem(f.title, lstFound);
            item->setData(Qt::UserRole, f.page);
            item->setToolTip(QString("%1: %2 %3").arg(f.page).arg(f.hits).arg(f.hits == 1 ? "hit" : "hits"));
        }
        if (searched.isEmpty()) lblFound->setText("Type the words to find.");
        else if (found.empty()) lblFound->setText("No page holds all these words.");
        else if (found.size() == 1) lblFound->setText("One page holds these words:");
        else lblFound->setText(QString("%1 pages hold these words:").arg(found.size()));
        if (!found.empty()) lstFound->setCurrentRow(0);
    }

    // Marks the searched words on the page, and brings the first into view.
    void Mark()
    {
        QList<QTextEdit::ExtraSelection> marks;
        QTextCharFormat look;
        look.setBackground(QColor(0xff, 0xd2, 0x7a));
        for (const QString& w : searched) {
            const QRegularExpression re = WordStart(w);
            for (QTextCursor c = page->document()->find(re); !c.isNull(); c = page->document()->find(re, c))
                marks.append({c, look});
        }
        page->setExtraSelections(marks);
        if (marks.isEmpty()) return;
        const auto first = std::min_element(marks.begin(), marks.end(), [](const auto& a, const auto& b) {
            return a.cursor.selectionStart() < b.cursor.selectionStart();
        });
        QTextCursor at = first->cursor;
        at.setPosition(at.selectionStart());
        page->setTextCursor(at);
        // A third of the view above it, so that it reads with what leads up to it.
        QScrollBar* bar = page->verticalScrollBar();
        bar->setValue(bar->value() + page->cursorRect(at).top() - page->viewport()->height() / 3);
    }
};

frmHelp::frmHelp(QWidget* parent) : QWidget(parent, Qt::Window), d_(std::make_unique<Impl>())
{
    d_->form = this;
    setObjectName("frmHelp");
    setWindowTitle(Q(AppTitle()) + " Manual");
    setWindowIcon(QIcon(":/icons/app.svg"));
    // A window of its own beside the main window: the program ends with the
    // main window whether or not the manual is open.
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(980, 700);
    setMinimumSize(600, 400);

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 8);
    auto* buttons = new QHBoxLayout;
    outer->addLayout(buttons);
    auto button = [&](const char* name, const QString& caption, const char* icon, const QString& tip) {
        auto* b = new QPushButton(QIcon(QString(":/icons/%1.svg").arg(icon)), caption, this);
        b->setObjectName(name);
        b->setAccessibleName(ui::Plain(caption));
        b->setToolTip(tip);
        b->setAutoDefault(false);
        buttons->addWidget(b);
        return b;
    };
    d_->cmdBack = button("cmdBack", "&Back", "previous", "The page shown before (Alt+Left)");
    d_->cmdForward = button("cmdForward", "&Forward", "next", "The page shown after (Alt+Right)");
    QPushButton* cmdHome = button("cmdHome", "&Home", "home", "The manual's first page and its contents");
    QPushButton* cmdIndex = button("cmdIndex", "Keyword &Index", "page", "Every subject of the manual, from A to Z");
    buttons->addStretch(1);

    auto* split = new QSplitter(Qt::Horizontal, this);
    split->setObjectName("splHelp");
    split->setChildrenCollapsible(false);
    outer->addWidget(split, 1);

    d_->tabNav = new QTabWidget(split);
    d_->tabNav->setObjectName("tabNav");
    d_->tvContents = new QTreeWidget;
    d_->tvContents->setObjectName("tvContents");
    d_->tvContents->setHeaderHidden(true);
    d_->tvContents->setAccessibleName("Contents of the manual");
    d_->tabNav->addTab(d_->tvContents, "C&ontents");

    auto* search = new QWidget;
    search->setObjectName("tabSearch");
    auto* column = new QVBoxLayout(search);
    auto* lblSearch = new QLabel("&Words to find:", search);
    lblSearch->setObjectName("lblSearch");
    column->addWidget(lblSearch);
    auto* row = new QHBoxLayout;
    d_->txtSearch = new QLineEdit(search);
    d_->txtSearch->setObjectName("txtSearch");
    d_->txtSearch->setClearButtonEnabled(true);
    ui::Names(lblSearch, d_->txtSearch);
    row->addWidget(d_->txtSearch, 1);
    auto* cmdSearch = new QPushButton("&Find", search);
    cmdSearch->setObjectName("cmdSearch");
    cmdSearch->setAutoDefault(false);
    row->addWidget(cmdSearch);
    column->addLayout(row);
    d_->lblFound = new QLabel("Type the words to find.", search);
    d_->lblFound->setObjectName("lblFound");
    d_->lblFound->setWordWrap(true);
    column->addWidget(d_->lblFound);
    d_->lstFound = new QListWidget(search);
    d_->lstFound->setObjectName("lstFound");
    d_->lstFound->setAccessibleName("Pages found");
    column->addWidget(d_->lstFound, 1);
    d_->tabNav->addTab(search, "&Search");

    d_->page = new HelpBrowser(split);
    d_->page->setAccessibleName("Page of the manual");
    split->addWidget(d_->tabNav);
    split->addWidget(d_->page);
    split->setStretchFactor(1, 1);
    split->setSizes({250, 710});

    d_->page->missing = [](const QUrl& url) { NoManual(url.isLocalFile() ? url.toLocalFile() : url.toString()); };
    d_->FillContents();

    // Every command ends in itself if it meets a fault; the window stays.
    auto run = [](auto command) { return [command](auto&&...) { ui::RunCommand(command); }; };
    connect(d_->page, &QTextBrowser::sourceChanged, this,
            [this](const QUrl& url) { ui::RunCommand([&] { d_->PageShown(url); }); });
    connect(d_->page, &QTextBrowser::backwardAvailable, d_->cmdBack, &QWidget::setEnabled);
    connect(d_->page, &QTextBrowser::forwardAvailable, d_->cmdForward, &QWidget::setEnabled);
    connect(d_->cmdBack, &QPushButton::clicked, this, run([this] { d_->page->backward(); }));
    connect(d_->cmdForward, &QPushButton::clicked, this, run([this] { d_->page->forward(); }));
    connect(cmdHome, &QPushButton::clicked, this, run([this] { Open("index.html"); }));
    connect(cmdIndex, &QPushButton::clicked, this, run([this] { Open("keywords.html"); }));
    auto openItem = [this](QTreeWidgetItem* item) {
        ui::RunCommand([&] { Open(S(item->data(0, Qt::UserRole).toString())); });
    };
    connect(d_->tvContents, &QTreeWidget::itemClicked, this, openItem);
    connect(d_->tvContents, &QTreeWidget::itemActivated, this, openItem);
    connect(d_->txtSearch, &QLineEdit::returnPressed, this, run([this] { d_->RunSearch(); }));
    connect(cmdSearch, &QPushButton::clicked, this, run([this] { d_->RunSearch(); }));
    auto openFound = [this](QListWidgetItem* item) {
        ui::RunCommand([&] { OpenFound(item->data(Qt::UserRole).toString()); });
    };
    connect(d_->lstFound, &QListWidget::itemClicked, this, openFound);
    connect(d_->lstFound, &QListWidget::itemActivated, this, openFound);
    d_->cmdBack->setEnabled(false);
    d_->cmdForward->setEnabled(false);
}

frmHelp::~frmHelp() = default;

QTextBrowser* frmHelp::rtfPage() const { return d_->page; }

bool frmHelp::Open(const std::string& page)
{
    const QString asked = Q(page);
    const QString file = asked.section('#', 0, 0);
    const QString path = HelpPath(file);
    if (file.isEmpty() || !QFileInfo(path).isFile()) {
        NoManual(path);
        return false;
    }
    QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    if (asked.contains('#')) url.setFragment(asked.section('#', 1));
    d_->page->setSource(url);
    return true;
}

QString frmHelp::CurrentPage() const { return QFileInfo(d_->page->source().toLocalFile()).fileName(); }

std::vector<frmHelp::Found> frmHelp::Search(const QString& words)
{
    d_->searched = SearchWords(words);
    std::vector<Found> found;
    if (d_->searched.isEmpty()) return found;
    for (const ContentsPage& p : d_->contents) {
        const QString& text = d_->Text(p.file);
        Found f{p.file, p.title, 0};
        for (const QString& w : d_->searched) {
            int n = 0;
            for (auto it = WordStart(w).globalMatch(text); it.hasNext(); it.next()) ++n;
            if (n == 0) {
                f.hits = 0;
                break;
            }
            f.hits += n;
        }
        if (f.hits > 0) found.push_back(f);
    }
    std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) { return a.hits > b.hits; });
    return found;
}

void frmHelp::OpenFound(const QString& page)
{
    d_->marking = true;
    const bool shown = Open(S(page));
    d_->marking = false;
    if (shown) d_->Mark();
}

int frmHelp::MarkedCount() const { return static_cast<int>(d_->page->extraSelections().size()); }

bool ShowManual(const std::string& page)
{
    const QString file = Q(page).section('#', 0, 0);
    if (!QFileInfo(HelpPath(file)).isFile()) {
        NoManual(HelpPath(file));
        return false;
    }
    if (!g_help) g_help = new frmHelp;
    const bool shown = g_help->Open(page);
    g_help->setWindowState(g_help->windowState() & ~Qt::WindowMinimized);
    g_help->show();
    g_help->raise();
    g_help->activateWindow();
    return shown;
}

frmHelp* HelpWindow() { return g_help; }

}  // namespace ranvel
