#include "frmQuickView.h"
#include "ui/Skin.h"
#include "frame/OpenForms.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include <QAbstractTableModel>
#include <QChart>
#include <QChartView>
#include <QGuiApplication>
#include <QScreen>
#include <QDateTimeAxis>
#include <QEvent>
#include <QFont>
#include <QItemSelectionModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLineSeries>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <QValueAxis>
#include <functional>

namespace ql {

// The list of pays as the grid shows it: read only, each cell in its column's format.
class QuickViewModel : public QAbstractTableModel {
public:
    QuickViewModel(QuickView& view, std::function<void()> onStale, QObject* parent)
        : QAbstractTableModel(parent), m_view(view), m_onStale(std::move(onStale)) {}
    int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : m_view.QuickViewArray.rowCount();
    }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 10; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!index.isValid()) return {};
        if (role == Qt::DisplayRole) {
            const QString text = m_view.cellText(index.row(), index.column());
            // A page read after the pays changed: the list is read again once this paint is done.
            if (m_view.QuickViewArray.stale() && m_onStale) m_onStale();
            return text;
        }
        if (role == Qt::TextAlignmentRole)
            return QVariant::fromValue(Qt::AlignVCenter |
                                       (index.column() > 0 ? Qt::AlignRight : Qt::AlignLeft));
        // A pay not yet committed stands in italics; a screen reader hears its state with each cell.
        if (role == Qt::FontRole && !m_view.Committed(index.row())) {
            QFont italic;
            italic.setItalic(true);
            return italic;
        }
        if (role == Qt::AccessibleDescriptionRole || role == Qt::ToolTipRole)
            return m_view.CommitLine(index.row());
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return m_view.QuickViewArray.headings().value(section);
        return QAbstractTableModel::headerData(section, orientation, role);
    }
    Qt::ItemFlags flags(const QModelIndex& index) const override {
        return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
    }
    void reset() {
        beginResetModel();
        endResetModel();
    }

private:
    QuickView& m_view;
    std::function<void()> m_onStale;
};

namespace {
QPushButton* makeButton(const QString& caption, const QString& name, const QString& accessible,
                        QWidget* parent) {
    auto* b = new QPushButton(caption, parent);
    b->setObjectName(name);
    b->setAccessibleName(accessible);
    return b;
}
} // namespace

frmQuickView::frmQuickView(const QString& employeeName, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmQuickView"));
    setWindowTitle(m_view.caption);
    setAccessibleName(m_view.caption);
    // As large as the screen allows, up to 1280 by 620; the window can be resized.
    const QSize size = SizeOnScreen(QSize(1280, 620));
    resize(size);
    setSizeGripEnabled(true);
    auto* outer = new QVBoxLayout(this);

    auto* top = new QHBoxLayout;
    auto* nameLabel = new QLabel(QStringLiteral("Employee:"), this);
    m_employee = new QLineEdit(this);
    m_employee->setObjectName(QStringLiteral("txtEmployee"));
    m_employee->setAccessibleName(QStringLiteral("Employee"));
    m_employee->setReadOnly(true);
    nameLabel->setBuddy(m_employee);
    top->addWidget(nameLabel);
    top->addWidget(m_employee, 1);
    outer->addLayout(top);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    auto* left = new QWidget(splitter);
    auto* leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    m_model = new QuickViewModel(m_view, [this] { queueRefresh(); }, this);
    m_grid = new QTableView(left);
    m_grid->setObjectName(QStringLiteral("tgrdQuickV"));
    m_grid->setAccessibleName(QStringLiteral("Pays"));
    m_grid->setModel(m_model);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setAlternatingRowColors(true);
    m_grid->verticalHeader()->hide();
    m_grid->horizontalHeader()->setDefaultSectionSize(96);
    m_grid->horizontalHeader()->setMinimumSectionSize(60);
    m_grid->horizontalHeader()->setDefaultAlignment(Qt::Alignment(Qt::AlignCenter | Qt::TextWordWrap));
    m_grid->horizontalHeader()->setFixedHeight(44);
    m_grid->setColumnWidth(0, 86);
    m_grid->setColumnWidth(1, 70);
    leftLayout->addWidget(m_grid, 1);

    // The totals row stands under the columns it adds up.
    auto* totals = new QWidget(left);
    totals->setObjectName(QStringLiteral("totalsRow"));
    for (int i = 0; i < 9; ++i) {
        auto* t = new QLineEdit(totals);
        t->setObjectName(QStringLiteral("Text1(%1)").arg(i));
        t->setAccessibleName(
            QStringLiteral("Total of %1")
                .arg(i == 0 ? QStringLiteral("hours") : QStringLiteral("column %1").arg(i + 1)));
        t->setReadOnly(true);
        t->setAlignment(Qt::AlignRight);
        t->setFocusPolicy(Qt::ClickFocus);
        t->installEventFilter(this);
        m_totals << t;
    }
    totals->setFixedHeight(m_totals.first()->sizeHint().height() + 2);
    for (QLineEdit* t : m_totals)
        t->resize(t->width(), m_totals.first()->sizeHint().height());
    leftLayout->addWidget(totals);

    // The list has no room for the commit state in its columns: the selected pay's state in words.
    auto* stateRow = new QHBoxLayout;
    m_state = new QLabel(left);
    m_state->setObjectName(QStringLiteral("lblPayState"));
    m_state->setTextFormat(Qt::PlainText);
    auto* legend = new QLabel(QStringLiteral("Pays not yet committed are shown in italics."), left);
    legend->setObjectName(QStringLiteral("lblPayStateLegend"));
    legend->setAccessibleName(legend->text());
    stateRow->addWidget(m_state, 1);
    stateRow->addWidget(legend);
    leftLayout->addLayout(stateRow);
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionResized, this, [this] { alignTotals(); });
    connect(m_grid->horizontalHeader(), &QHeaderView::geometriesChanged, this, [this] { alignTotals(); });
    connect(m_grid->horizontalScrollBar(), &QAbstractSlider::valueChanged, this, [this] { alignTotals(); });
    // Rows already read (the selected pay's, say) are not read again when they come into view: a
    // scroll after the pays changed beside the screen reads the list again.
    connect(m_grid->verticalScrollBar(), &QAbstractSlider::valueChanged, this, [this] {
        if (m_view.QuickViewArray.changedSinceLoad()) queueRefresh();
    });

    m_chart = new QChartView(splitter);
    m_chart->setObjectName(QStringLiteral("chtPays"));
    m_chart->setAccessibleName(QStringLiteral("Chart of gross, PAYE and take-home pay"));
    m_chart->setRenderHint(QPainter::Antialiasing);
    m_chart->setMinimumSize(240, 160);
    // On a narrow screen the chart stands below the list, so that both keep a readable width.
    const bool narrow = size.width() < 1000;
    if (narrow) splitter->setOrientation(Qt::Vertical);
    splitter->addWidget(left);
    splitter->addWidget(m_chart);
    // Below the list the chart needs the height of its title, axes and legend to stay readable.
    if (narrow) m_chart->setMinimumHeight(230);
    splitter->setStretchFactor(0, narrow ? 1 : 3);
    splitter->setStretchFactor(1, narrow ? 1 : 2);
    outer->addWidget(splitter, 1);

    auto* buttons = new QHBoxLayout;
    m_dateOrder = makeButton(QStringLiteral("&Date Order"), QStringLiteral("cmdDateOrder"),
                             QStringLiteral("Date order"), this);
    m_entryOrder = makeButton(QStringLiteral("&Entry Order"), QStringLiteral("cmdEntryOrder"),
                              QStringLiteral("Entry order"), this);
    m_print = makeButton(QStringLiteral("&Print"), QStringLiteral("cmdPrint"), QStringLiteral("Print"), this);
    m_ok = makeButton(QStringLiteral("&OK"), QStringLiteral("cmdOK"), QStringLiteral("OK"), this);
    buttons->addWidget(m_dateOrder);
    buttons->addWidget(m_entryOrder);
    buttons->addStretch(1);
    buttons->addWidget(m_print);
    buttons->addWidget(m_ok);
    outer->addLayout(buttons);
    setTabOrder(m_grid, m_dateOrder);
    setTabOrder(m_dateOrder, m_entryOrder);
    setTabOrder(m_entryOrder, m_print);
    setTabOrder(m_print, m_ok);
    m_employee->setFocusPolicy(Qt::ClickFocus);
    m_employee->installEventFilter(this);

    connect(m_dateOrder, &QPushButton::clicked, this, [this] { m_view.cmdDateOrder_Click(); });
    connect(m_entryOrder, &QPushButton::clicked, this, [this] { m_view.cmdEntryOrder_Click(); });
    connect(m_print, &QPushButton::clicked, this, [this] { m_view.PrintQView(); });
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);

    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { showPayState(); });

    m_view.onChanged = [this] { refresh(); };
    m_view.Form_Load(employeeName);
    // The grid in the user's colours, the screen over the suite's working area.
    SkinForm(this);
    SkinGrid(m_grid, true);
    CentreForm(this);
    registerOpenForm(this, [this] { reject(); });
}

frmQuickView::~frmQuickView() {
    unregisterOpenForm(this);
    m_view.onChanged = nullptr;
    // The header and the scroll bar go with the children, after this object's members: their signals
    // must no longer reach the totals, which go first.
    m_grid->horizontalHeader()->disconnect(this);
    m_grid->horizontalScrollBar()->disconnect(this);
    m_grid->verticalScrollBar()->disconnect(this);
    // The grid's model reads the view, which goes before the child widgets do.
    m_grid->setModel(nullptr);
}

void frmQuickView::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    m_view.Form_Activate();
}

// Coming to the front again, the screen shows the pays as they are now.
void frmQuickView::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) refreshIfChanged();
}

void frmQuickView::queueRefresh() {
    if (m_refreshQueued) return;
    m_refreshQueued = true;
    QTimer::singleShot(0, this, [this] { refreshIfChanged(); });
}

void frmQuickView::refreshIfChanged() {
    m_refreshQueued = false;
    const int top = m_grid->verticalScrollBar()->value();
    if (m_view.RefreshIfChanged()) m_grid->verticalScrollBar()->setValue(top);
}

// The text boxes of the totals and the name pass the focus on to the grid.
bool frmQuickView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && (watched == m_employee || m_totals.contains(watched))) {
        m_grid->setFocus();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmQuickView::refresh() {
    m_employee->setText(m_view.txtEmployee);
    // The reload keeps the selected row where it can, else selects the first; the grid keeps its place.
    const int selected = m_grid->currentIndex().row();
    m_model->reset();
    const int rows = m_model->rowCount();
    if (rows > 0) {
        const bool autoScroll = m_grid->hasAutoScroll();
        m_grid->setAutoScroll(false);
        m_grid->setCurrentIndex(m_model->index(selected >= 0 && selected < rows ? selected : 0, 0));
        m_grid->setAutoScroll(autoScroll);
    }
    showPayState();
    for (int i = 0; i < m_totals.size(); ++i)
        m_totals.at(i)->setText(m_view.Text1.value(i));
    m_dateOrder->setEnabled(m_view.cmdDateOrderEnabled);
    m_entryOrder->setEnabled(m_view.cmdEntryOrderEnabled);
    if (m_view.focusControl == QLatin1String("cmdOK")) m_ok->setFocus();
    refreshChart();
    alignTotals();
}

void frmQuickView::showPayState() {
    const int row = m_grid->currentIndex().row();
    const QString state = row < 0 ? QStringLiteral("No pay selected")
                                   : QStringLiteral("Selected pay: ") + m_view.CommitLine(row);
    m_state->setText(state);
    m_state->setAccessibleName(state);
}

void frmQuickView::alignTotals() {
    const QHeaderView* header = m_grid->horizontalHeader();
    const int offset = m_grid->frameWidth();
    for (int i = 0; i < m_totals.size(); ++i) {
        const int column = i + 1;
        m_totals.at(i)->setGeometry(offset + header->sectionViewportPosition(column), 0,
                                    header->sectionSize(column), m_totals.at(i)->height());
    }
}

// Gross, PAYE and take-home per pay, by date, over the pays the list shows.
void frmQuickView::refreshChart() {
    auto* chart = new QChart;
    chart->setTitle(
        QStringLiteral("Gross, %1 and take-home pay per pay").arg(m_view.QuickViewArray.headings().value(4)));
    chart->legend()->setAlignment(Qt::AlignBottom);
    const QList<HistoryPoint> points = m_view.ChartPoints();
    double top = 0;
    auto* x = new QDateTimeAxis;
    x->setFormat(QStringLiteral("d/MM/yy"));
    x->setTitleText(QStringLiteral("Pay date"));
    auto* y = new QValueAxis;
    y->setLabelFormat(QStringLiteral("$%.0f"));
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    const char* const names[] = {"Gross", nullptr, "Take Home"};
    double HistoryPoint::*const amounts[] = {&HistoryPoint::gross, &HistoryPoint::paye, &HistoryPoint::takeHome};
    for (int s = 0; s < 3; ++s) {
        auto* series = new QLineSeries(chart);
        series->setName(names[s] ? QString::fromLatin1(names[s]) : m_view.QuickViewArray.headings().value(4));
        series->setPointsVisible(points.size() < 60);
        for (const HistoryPoint& p : points) {
            const double amount = p.*amounts[s];
            top = qMax(top, amount);
            series->append(double(QDateTime(p.date, QTime(12, 0)).toMSecsSinceEpoch()), amount);
        }
        chart->addSeries(series);
        series->attachAxis(x);
        series->attachAxis(y);
    }
    if (points.isEmpty()) {
        x->setRange(QDateTime(Today(), QTime(0, 0)).addDays(-7), QDateTime(Today(), QTime(0, 0)));
        chart->setTitle(QStringLiteral("No pays to show"));
    } else if (points.size() == 1) {
        const QDateTime only(points.first().date, QTime(12, 0));
        x->setRange(only.addDays(-3), only.addDays(3));
    } else {
        // A margin at both ends keeps the first and the last point, with their markers, inside.
        QDate first = points.first().date, last = points.first().date;
        for (const HistoryPoint& p : points) {
            first = qMin(first, p.date);
            last = qMax(last, p.date);
        }
        const qint64 margin = qMax<qint64>(1, first.daysTo(last) / 20);
        x->setRange(QDateTime(first.addDays(-margin), QTime(12, 0)), QDateTime(last.addDays(margin), QTime(12, 0)));
    }
    y->setRange(0, top > 0 ? top * 1.1 : 100);
    y->applyNiceNumbers();
    QChart* old = m_chart->chart();
    m_chart->setChart(chart);
    delete old;
}

void ShowQuickView(QWidget* owner, const QString& employeeName) {
    frmQuickView form(employeeName, owner);
    form.exec();
}

} // namespace ql
