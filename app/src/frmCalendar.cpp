#include "ranvel/app/frmCalendar.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QEvent>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QSpinBox>
#include <QTextBrowser>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "ranvel/app/formkit.h"
#include "ranvel/engine/request.h"
#include "ranvel/platform/gui/dialogs.h"
#include "ranvel/platform/gui/qstr.h"
#include "ranvel/platform/sinks.h"
#include "ranvel/platform/vbmath.h"
#include "ranvel/platform/wholefile.h"

namespace ranvel {

namespace {

const char* const kWeekDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
const char* const kWeekDayNames[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

constexpr const char* kTitle = "Muhurtha Calendar";
// The list's columns.
enum Column { ColRank, ColDate, ColDay, ColScore, ColPercent, ColBand, ColCount };
constexpr int kNumberColumns[] = {ColRank, ColScore, ColPercent, ColBand};
// The width of the right-hand side: list, detail and the day's command.
constexpr int kSideWidth = 380;

QString DateText(const CalendarDay& d) { return Q(d.Day.ToDayFirstText()); }
QString WeekDay(const CalendarDay& d) { return kWeekDays[d.Day.WeekDay() - 1]; }
// Numbers as the result pages write them, "." the decimal point whatever
// the locale.
QString Number(double x) { return Q(vb::CStr(x)); }
QString Html(const std::string& s) { return Q(s).toHtmlEscaped(); }

QString TimeRange(double from, double to)
{
    return Q(vb::Format(from, "00.00")) + " to " + Q(vb::Format(to, "00.00"));
}

// The title line: the purpose, its place and the range searched.
QString Heading(const MuhurthaCalendar& c)
{
    QString s = Q(c.MuhuName);
    if (!c.Place.empty()) s += ", " + Q(c.Place);
    return s + ": " + Q(c.StartDate.ToDayFirstText()) + " to " + Q(c.EndDate.ToDayFirstText()) + ", " +
           TimeRange(c.TimeStart, c.TimeEnd);
}

// The index of a day in the calendar's days.
std::size_t IndexOf(const MuhurthaCalendar& c, const CalendarDay* d)
{
    return static_cast<std::size_t>(d - c.Days.data());
}

QPushButton* Command(const char* name, const QString& caption)
{
    auto* b = new QPushButton(caption);
    b->setObjectName(name);
    // Enter belongs to the grid and the list, never to a button by default.
    b->setAutoDefault(false);
    return b;
}

}  // namespace

// ---- the grid ----

int CalendarGrid::CellToFit(const MuhurthaCalendar& calendar, int width)
{
    constexpr int kSmallest = 16, kLargest = 32;
    int cell = kLargest;
    while (cell > kSmallest && CalendarGridsSize(calendar, kColumns, cell).width() > width) --cell;
    return cell;
}

CalendarGrid::CalendarGrid(const MuhurthaCalendar& calendar, int cell, QWidget* parent)
    : QWidget(parent), calendar_(calendar), cell_(cell), colours_(CalendarColours::FromActive())
{
    setObjectName("calGrid");
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Month grids");
    setFixedSize(sizeHint());
}

void CalendarGrid::SetCell(int cell)
{
    if (cell == cell_) return;
    cell_ = cell;
    cells_.clear();
    setFixedSize(sizeHint());
    update();
}

QSize CalendarGrid::sizeHint() const { return CalendarGridsSize(calendar_, kColumns, cell_); }

QRect CalendarGrid::Area() const { return QRect(QPoint(0, 0), sizeHint()); }

void CalendarGrid::SetSelected(const CalendarDay* day)
{
    if (selected_ == day) return;
    selected_ = day;
    update();
}

void CalendarGrid::SetColours(const CalendarColours& colours)
{
    colours_ = colours;
    update();
}

QRect CalendarGrid::CellRect(const CalendarDay& day) const
{
    // The drawing alone knows where a day lies. It is asked once at points
    // half a cell apart, which finds a point inside every day's cell; a
    // cell's edges are then sought pixel by pixel from that point.
    const QRect area = Area();
    if (cells_.empty()) {
        const int step = std::max(1, cell_ / 2);
        cells_.resize(calendar_.Days.size());
        for (int y = step / 2; y < area.height(); y += step)
            for (int x = step / 2; x < area.width(); x += step)
                if (const CalendarDay* d = CalendarDayAt(QPoint(x, y), area, calendar_, kColumns, cell_)) {
                    QPoint& p = cells_[IndexOf(calendar_, d)];
                    if (p.isNull()) p = QPoint(x, y);
                }
    }
    const std::size_t i = IndexOf(calendar_, &day);
    if (i >= cells_.size() || cells_[i].isNull()) return {};
    const QPoint p = cells_[i];
    auto inside = [&](int x, int y) {
        return area.contains(x, y) && CalendarDayAt(QPoint(x, y), area, calendar_, kColumns, cell_) == &day;
    };
    int left = p.x(), right = p.x(), top = p.y(), bottom = p.y();
    while (inside(left - 1, p.y())) --left;
    while (inside(right + 1, p.y())) ++right;
    while (inside(p.x(), top - 1)) --top;
    while (inside(p.x(), bottom + 1)) ++bottom;
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

QPoint CalendarGrid::CellCentre(const CalendarDay& day) const
{
    const QRect r = CellRect(day);
    return r.isNull() ? QPoint() : r.center();
}

void CalendarGrid::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    PaintCalendarGrids(p, Area(), calendar_, colours_, kColumns, cell_, selected_);
    if (!selected_ || !hasFocus()) return;
    // Where the keys act: a dashed ring on the paper around the chosen day.
    const QRect cell = CellRect(*selected_);
    if (cell.isNull()) return;
    p.setPen(QPen(colours_.Heading, 1, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawRect(cell.adjusted(-1, -1, 0, 0));
    p.drawRect(cell.adjusted(-2, -2, 1, 1));
}

void CalendarGrid::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    if (event->button() != Qt::LeftButton) return;
    if (const CalendarDay* d = CalendarDayAt(event->position().toPoint(), Area(), calendar_, kColumns, cell_))
        emit DayChosen(d);
}

void CalendarGrid::keyPressEvent(QKeyEvent* event)
{
    int step = 0;
    switch (event->key()) {
    case Qt::Key_Left: step = -1; break;
    case Qt::Key_Right: step = 1; break;
    case Qt::Key_Up: step = -7; break;
    case Qt::Key_Down: step = 7; break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (selected_) emit DayOpened(selected_);
        event->accept();
        return;
    default: QWidget::keyPressEvent(event); return;
    }
    event->accept();
    if (calendar_.Days.empty()) return;
    // From the chosen day, or from the first day when none is chosen; a
    // step that would leave the calendar's days is not taken.
    if (!selected_) {
        emit DayChosen(&calendar_.Days.front());
        return;
    }
    if (const CalendarDay* to = calendar_.DayOf(selected_->Day.AddDays(step))) emit DayChosen(to);
}

bool CalendarGrid::event(QEvent* event)
{
    // A day's tip: its date and how the search graded it.
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const CalendarDay* d = CalendarDayAt(help->pos(), Area(), calendar_, kColumns, cell_);
        if (!d) {
            QToolTip::hideText();
            event->ignore();
            return true;
        }
        QString tip = WeekDay(*d) + " " + DateText(*d) + ": ";
        tip += d->Tested ? Number(d->Percent) + " percent, band " + QString::number(d->Band) + ", best moment " +
                               Q(d->Best.Time)
                         : QString("no moment tested");
        QToolTip::showText(help->globalPos(), tip, this);
        return true;
    }
    return QWidget::event(event);
}

// The frame of the keys' day shows where the keys act.
void CalendarGrid::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void CalendarGrid::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

// ---- the window ----

frmCalendar::frmCalendar(std::shared_ptr<const MuhurthaCalendar> calendar, QWidget* parent)
    : QDialog(parent), calendar_(std::move(calendar))
{
    setObjectName("frmCalendar");
    setWindowTitle(kTitle);
    setSizeGripEnabled(true);

    auto* heading = new QLabel(Heading(*calendar_));
    heading->setObjectName("lblCalendarTitle");
    heading->setWordWrap(true);
    QFont hf = heading->font();
    hf.setBold(true);
    heading->setFont(hf);

    // The left: the grids, scrolled, and the exports under them. The cells
    // follow the room the window gives them.
    grid_ = new CalendarGrid(*calendar_, CalendarGrid::CellToFit(*calendar_, 0));
    scroll_ = new QScrollArea;
    scroll_->setObjectName("scrGrids");
    scroll_->setWidget(grid_);
    scroll_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    scroll_->setMinimumWidth(240);
    scroll_->installEventFilter(this);
    // The keys reach the grid itself, not the area around it.
    scroll_->setFocusPolicy(Qt::NoFocus);

    QPushButton* ics = Command("cmdExportIcs", "Export &iCalendar...");
    QPushButton* png = Command("cmdExportPng", "Export P&NG...");
    QPushButton* pdf = Command("cmdExportPdf", "Export P&DF...");
    QPushButton* close = Command("cmdClose", "Close");
    ics->setToolTip("The listed days as events of an iCalendar file, each spanning its lagna");
    png->setToolTip("The month grids as a picture");
    pdf->setToolTip("The ranked list and the month grids on letter pages");
    auto* exports = new QHBoxLayout;
    exports->addWidget(ics);
    exports->addWidget(png);
    exports->addWidget(pdf);
    exports->addStretch(1);
    exports->addWidget(close);
    auto* left = new QVBoxLayout;
    left->addWidget(scroll_, 1);
    left->addLayout(exports);

    // The right: which days to list, the list, the chosen day.
    spnTop_ = new QSpinBox;
    spnTop_->setObjectName("spnTop");
    spnTop_->setRange(1, 366);
    spnTop_->setValue(10);
    cmbMinBand_ = new QComboBox;
    cmbMinBand_->setObjectName("cmbMinBand");
    cmbMinBand_->addItem("None", 0);
    for (int band = 10; band <= 100; band += 10) cmbMinBand_->addItem(QString::number(band), band);
    spnTop_->setMinimumWidth(80);
    cmbMinBand_->setMinimumWidth(80);
    auto* filters = new QFormLayout;
    filters->setContentsMargins(0, 0, 0, 0);
    filters->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    auto* topLabel = new QLabel("Days to &list:");
    auto* bandLabel = new QLabel("&Hide days under band:");
    topLabel->setObjectName("lblTop");
    bandLabel->setObjectName("lblMinBand");
    ui::Names(topLabel, spnTop_);
    ui::Names(bandLabel, cmbMinBand_);
    filters->addRow(topLabel, spnTop_);
    filters->addRow(bandLabel, cmbMinBand_);

    lvwRanked_ = new QTreeWidget;
    lvwRanked_->setObjectName("lvwRanked");
    lvwRanked_->setAccessibleName("Ranked days");
    lvwRanked_->setRootIsDecorated(false);
    lvwRanked_->setUniformRowHeights(true);
    lvwRanked_->setAllColumnsShowFocus(true);
    lvwRanked_->setSelectionMode(QAbstractItemView::SingleSelection);
    lvwRanked_->setHeaderLabels({"Rank", "Date", "Day", "Score", "Percent", "Band"});
    lvwRanked_->header()->setStretchLastSection(false);
    lvwRanked_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lvwRanked_->header()->setSectionResizeMode(ColDate, QHeaderView::Stretch);
    // Numbers stand to the right.
    for (int c : kNumberColumns) lvwRanked_->headerItem()->setTextAlignment(c, Qt::AlignRight);

    auto* detailLabel = new QLabel("Detail of the da&y:");
    detailLabel->setObjectName("lblDayDetail");
    txtDayDetail_ = new QTextBrowser;
    txtDayDetail_->setObjectName("txtDayDetail");
    txtDayDetail_->setOpenLinks(false);
    ui::Names(detailLabel, txtDayDetail_);
    cmdShowDayPages_ = Command("cmdShowDayPages", "&Show this day's pages");
    cmdShowDayPages_->setToolTip("The result pages, printing, PDF and mail for the chosen day's best moment; "
                                 "View, Muhurtha Calendar brings the calendar back");

    cmdDaySheet_ = Command("cmdDaySheet", "Day s&heet");
    cmdDaySheet_->setToolTip("The chosen day's panchanga and divisions at the request's place");
    auto* dayCommands = new QHBoxLayout;
    dayCommands->addWidget(cmdShowDayPages_, 1);
    dayCommands->addWidget(cmdDaySheet_);

    auto* right = new QVBoxLayout;
    right->addLayout(filters);
    right->addWidget(lvwRanked_, 3);
    right->addWidget(detailLabel);
    right->addWidget(txtDayDetail_, 4);
    right->addLayout(dayCommands);
    auto* side = new QWidget;
    side->setObjectName("framSide");
    side->setLayout(right);
    right->setContentsMargins(0, 0, 0, 0);
    side->setFixedWidth(kSideWidth);

    auto* body = new QHBoxLayout;
    body->addLayout(left, 1);
    body->addWidget(side);
    auto* column = new QVBoxLayout(this);
    column->addWidget(heading);
    column->addLayout(body, 1);

    // The keys go from the grid to the list's choices, the list, the
    // detail and the day's command, then the exports.
    QWidget* order[] = {grid_, spnTop_, cmbMinBand_, lvwRanked_, txtDayDetail_, cmdShowDayPages_, cmdDaySheet_,
                        ics,    png,     pdf,         close};
    for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);

    // The window fits a 1024 x 768 screen with its frame.
    const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                           : QRect(0, 0, 1024, 768);
    resize(std::min(1000, screen.width() - 16), std::min(700, screen.height() - 48));

    connect(grid_, &CalendarGrid::DayChosen, this, &frmCalendar::SelectDay);
    connect(grid_, &CalendarGrid::DayOpened, this, [this](const CalendarDay* d) {
        SelectDay(d);
        txtDayDetail_->setFocus(Qt::OtherFocusReason);
    });
    connect(lvwRanked_, &QTreeWidget::currentItemChanged, this, [this] { FollowList(); });
    connect(lvwRanked_, &QTreeWidget::itemActivated, this, [this] {
        FollowList();
        txtDayDetail_->setFocus(Qt::OtherFocusReason);
    });
    connect(spnTop_, &QSpinBox::valueChanged, this, &frmCalendar::FillList);
    connect(cmbMinBand_, &QComboBox::currentIndexChanged, this, &frmCalendar::FillList);
    connect(cmdShowDayPages_, &QPushButton::clicked, this, [this] { ShowDayPages(); });
    connect(cmdDaySheet_, &QPushButton::clicked, this, [this] { ShowDaySheet(); });
    connect(ics, &QPushButton::clicked, this, [this] { ExportIcs(); });
    connect(png, &QPushButton::clicked, this, [this] { ExportPng(); });
    connect(pdf, &QPushButton::clicked, this, [this] { ExportPdf(); });
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    FillList();
    // The best Muhurtha of the search is chosen first.
    SelectDay(calendar_->Ranked.empty() ? nullptr : &calendar_->Days[calendar_->Ranked.front()]);
    grid_->setFocus(Qt::OtherFocusReason);
}

frmCalendar::~frmCalendar() = default;

bool frmCalendar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == scroll_ && event->type() == QEvent::Resize) FitGrid();
    return QDialog::eventFilter(watched, event);
}

void frmCalendar::FitGrid()
{
    // The room of the scroll area less its frame and a vertical scroll bar,
    // so that the cells do not change as the bar comes and goes.
    const int room = scroll_->width() - 2 * scroll_->frameWidth() -
                     scroll_->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll_) - 2;
    const int cell = CalendarGrid::CellToFit(*calendar_, room);
    if (cell == grid_->Cell()) return;
    grid_->SetCell(cell);
    if (const CalendarDay* d = SelectedDay()) {
        const QPoint c = grid_->CellCentre(*d);
        if (!c.isNull()) scroll_->ensureVisible(c.x(), c.y(), 2 * cell, 2 * cell);
    }
}

std::vector<std::size_t> frmCalendar::Listed() const
{
    return calendar_->Listed(spnTop_->value(), cmbMinBand_->currentData().toInt());
}

void frmCalendar::FillList()
{
    filling_ = true;
    lvwRanked_->clear();
    int rank = 0;
    QTreeWidgetItem* chosen = nullptr;
    for (std::size_t i : Listed()) {
        const CalendarDay& d = calendar_->Days[i];
        auto* item = new QTreeWidgetItem(lvwRanked_, QStringList{QString::number(++rank), DateText(d), WeekDay(d),
                                                                Number(d.Score), Number(d.Percent),
                                                                QString::number(d.Band)});
        item->setData(0, Qt::UserRole, static_cast<qulonglong>(i));
        for (int c : kNumberColumns) item->setTextAlignment(c, Qt::AlignRight | Qt::AlignVCenter);
        if (d.EngineBest) {
            QFont f = item->font(0);
            f.setBold(true);
            for (int c = 0; c < ColCount; ++c) item->setFont(c, f);
            item->setToolTip(ColRank, "The best Muhurtha of the search");
        }
        if (&d == SelectedDay()) chosen = item;
    }
    lvwRanked_->setCurrentItem(chosen);
    if (!chosen) lvwRanked_->clearSelection();
    filling_ = false;
}

void frmCalendar::FollowList()
{
    if (filling_) return;
    QTreeWidgetItem* item = lvwRanked_->currentItem();
    if (!item) return;
    const std::size_t i = item->data(0, Qt::UserRole).toULongLong();
    if (i < calendar_->Days.size()) SelectDay(&calendar_->Days[i]);
}

void frmCalendar::SelectDay(const CalendarDay* day)
{
    grid_->SetSelected(day);
    if (day) {
        const QPoint c = grid_->CellCentre(*day);
        if (!c.isNull()) scroll_->ensureVisible(c.x(), c.y(), 2 * grid_->Cell(), 2 * grid_->Cell());
    }
    // The list follows when it shows the day; else nothing in it is chosen.
    filling_ = true;
    QTreeWidgetItem* found = nullptr;
    for (int r = 0; day && r < lvwRanked_->topLevelItemCount(); ++r) {
        QTreeWidgetItem* item = lvwRanked_->topLevelItem(r);
        if (item->data(0, Qt::UserRole).toULongLong() == IndexOf(*calendar_, day)) found = item;
    }
    lvwRanked_->setCurrentItem(found);
    if (found) lvwRanked_->scrollToItem(found);
    else lvwRanked_->clearSelection();
    filling_ = false;
    ShowDetail();
}

void frmCalendar::ShowDetail()
{
    const CalendarDay* d = SelectedDay();
    cmdShowDayPages_->setEnabled(d && d->Tested);
    cmdDaySheet_->setEnabled(d != nullptr);
    if (!d) {
        txtDayDetail_->setHtml("<p>Choose a day in the grid or the list.</p>");
        return;
    }
    QString h = "<p><b>" + QString(kWeekDayNames[d->Day.WeekDay() - 1]) + ", " + DateText(*d) + "</b></p>";
    if (!d->Tested) {
        txtDayDetail_->setHtml(h + "<p>No moment of the search fell on this day.</p>");
        return;
    }
    if (d->EngineBest) h += "<p><i>The best Muhurtha of the search.</i></p>";
    h += "<p>Best moment <b>" + Html(d->Best.Time) + "</b>, lagna from <b>" + Html(d->LagnaStartText) +
         "</b> to <b>" + Html(d->LagnaEndText) + "</b><br>";
    h += "Score " + Number(d->Score) + " of " + QString::number(d->MaxScore) + ", <b>" + Number(d->Percent) +
         " percent</b>, band " + QString::number(d->Band) + "</p>";
    if (!d->BandText.empty()) h += "<p><i>" + Html(d->BandText) + "</i></p>";

    // The moments of the day; the best one is the earliest of the highest.
    h += "<p><b>Moments tested</b></p><table cellspacing='0' cellpadding='1'>";
    bool marked = false;
    for (const MomentResult& m : d->Moments) {
        const bool best = !marked && m.Time == d->Best.Time && m.Score == d->Best.Score;
        marked = marked || best;
        const QString time = Html(m.Time);
        h += "<tr><td>" + (best ? "<b>" + time + "</b>" : time) + "</td><td align='right'>&nbsp;&nbsp;" +
             Number(m.Score) + "</td><td>" + (best ? "&nbsp;&nbsp;<b>best</b>" : QString()) + "</td></tr>";
    }
    h += "</table>";

    auto elements = [&h](const char* title, const std::vector<CalendarElement>& list) {
        h += QString("<p><b>%1</b></p>").arg(title);
        if (list.empty()) {
            h += "<p>None.</p>";
            return;
        }
        h += "<ul style='margin-left:-20px'>";
        for (const CalendarElement& e : list)
            h += "<li>" + Html(e.Heading.empty() ? e.Code : e.Heading) + " (" + Html(e.Code) + ", " +
                 QString::number(e.Score) + ")</li>";
        h += "</ul>";
    };
    elements("Elements held", d->Held);
    elements("Defects", d->Defects);
    txtDayDetail_->setHtml(h);
}

void frmCalendar::RefreshColours() { grid_->SetColours(CalendarColours::FromActive()); }

// ---- commands ----

void frmCalendar::ShowDayPages()
{
    const CalendarDay* d = SelectedDay();
    if (!d || !d->Tested) return;
    // The day is picked from the engine's moments by their place in its
    // list: after another search they are no longer the calendar's.
    const MomentResults& results = Engine().Results;
    if (d->ResultIndex >= results.size() || results[d->ResultIndex].Date != d->Best.Date ||
        results[d->ResultIndex].Score != d->Best.Score) {
        MsgBox("The search this calendar was read from has been replaced. Please generate it again.", MsgButtons::OK,
               kTitle, MsgIcon::Exclamation);
        return;
    }
    ui::RunCommand([&] {
        PickCalendarDay(Engine(), *d);
        emit DayPicked();
    });
}

void frmCalendar::ShowDaySheet()
{
    if (const CalendarDay* d = SelectedDay()) emit DaySheetWanted(d->Day);
}

namespace {

// The name a save dialog offers: the Muhurtha's code and the range.
std::string Suggested(const MuhurthaCalendar& c, const char* ext)
{
    std::string s = "Muhurtha-Calendar";
    if (!c.MuhuCode.empty()) s += "-" + c.MuhuCode;
    return s + "-" + vb::Format(c.StartDate.Year(), "0000") + vb::Format(c.StartDate.Month(), "00") + ext;
}

// Runs a writer; a failure is told in a box with the writer's message.
template <typename F>
void Export(const char* title, F&& write)
{
    try {
        write();
    } catch (const std::exception& e) {
        MsgBox(e.what(), MsgButtons::OK, title, MsgIcon::Critical);
    }
}

}  // namespace

void frmCalendar::ExportIcs()
{
    const std::vector<std::size_t> listed = Listed();
    if (listed.empty()) {
        MsgBox("No day of the calendar reaches the band chosen: there is nothing to export.", MsgButtons::OK,
               "Export iCalendar", MsgIcon::Exclamation);
        return;
    }
    const std::string path = Dialogs().SaveFile(this, "Export iCalendar", "iCalendar (*.ics)|*.ics|", ".ics",
                                                Suggested(*calendar_, ".ics"));
    if (path.empty()) return;
    Export("Export iCalendar", [&] {
        const QDateTime now = QDateTime::currentDateTimeUtc();
        const DateTime stamp = DateTime::FromParts(now.date().year(), now.date().month(), now.date().day(),
                                                   now.time().hour(), now.time().minute(), now.time().second());
        WriteWholeFile(path, CalendarIcs(*calendar_, listed, stamp));
    });
}

void frmCalendar::ExportPng()
{
    const std::string path = Dialogs().SaveFile(this, "Export PNG", "PNG picture (*.png)|*.png|", ".png",
                                                Suggested(*calendar_, ".png"));
    if (path.empty()) return;
    Export("Export PNG", [&] { SaveCalendarPng(*calendar_, path); });
}

void frmCalendar::ExportPdf()
{
    const std::string path = Dialogs().SaveFile(this, "Export PDF", "Portable Document Format (*.pdf)|*.pdf|",
                                                ".pdf", Suggested(*calendar_, ".pdf"));
    if (path.empty()) return;
    Export("Export PDF", [&] { SaveCalendarPdf(*calendar_, Listed(), path); });
}

}  // namespace ranvel
