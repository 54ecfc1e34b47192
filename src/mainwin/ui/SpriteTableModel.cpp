#include "mainwin/ui/SpriteTableModel.h"

#include <QHeaderView>
#include <QTableView>

#include "config/MessageCatalog.h"
#include "platform/Twips.h"

namespace tarvolin {

namespace {
// The default titles: the captions MAIN_LST_1..9, then the fixed one of PcxPath.
std::array<QString, kColumnCount> DefaultTitles() {
    std::array<QString, kColumnCount> titles;
    int n = 0;
    for (const CaptionEntry& c : CaptionTable()) {
        if (QString::fromUtf8(c.Key).startsWith(QStringLiteral("MAIN_LST_")) && n < kColumnCount - 1)
            titles[static_cast<size_t>(n++)] = QString::fromUtf8(c.Default);
    }
    titles[kColumnCount - 1] = QString::fromUtf8(kPcxPathTitle);
    return titles;
}
}  // namespace

SpriteTableModel::SpriteTableModel(SpriteTable& table)
    : table_(table), shownRows_(table.RowCount()), titles_(DefaultTitles()), selection_(this) {
    table_.SetObserver(this);
    connect(&selection_, &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current, const QModelIndex&) { ViewCurrentChanged(current); });
    SelectionChanged(table_.Selected());
}

SpriteTableModel::~SpriteTableModel() { table_.SetObserver(nullptr); }

int SpriteTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shownRows_; }

int SpriteTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumnCount; }

QVariant SpriteTableModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    const int place = index.row() + 1;
    if (place > table_.RowCount() || index.column() >= kColumnCount) return {};
    return QString::fromStdString(table_.Cell(place, static_cast<Column>(index.column())));
}

QVariant SpriteTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount) return {};
    if (role == Qt::DisplayRole) return titles_[static_cast<size_t>(section)];
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

bool SpriteTableModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role) {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kColumnCount)
        return false;
    titles_[static_cast<size_t>(section)] = value.toString();
    emit headerDataChanged(orientation, section, section);
    return true;
}

void SpriteTableModel::TableReset() {
    // One reset for a whole new table: a view of 10,000 rows then costs no more than one
    // of ten.
    beginResetModel();
    shownRows_ = table_.RowCount();
    endResetModel();
}

void SpriteTableModel::RowInserted(int place) {
    beginInsertRows({}, place - 1, place - 1);
    shownRows_ = table_.RowCount();
    endInsertRows();
}

void SpriteTableModel::RowRemoved(int place) {
    beginRemoveRows({}, place - 1, place - 1);
    shownRows_ = table_.RowCount();
    endRemoveRows();
}

void SpriteTableModel::CellChanged(int place, Column column) {
    const QModelIndex i = index(place - 1, static_cast<int>(column));
    emit dataChanged(i, i, {Qt::DisplayRole});
}

void SpriteTableModel::SelectionChanged(int place) {
    syncing_ = true;
    if (place < 1) selection_.clear();
    else
        selection_.setCurrentIndex(index(place - 1, static_cast<int>(Column::GroupNo)),
                                   QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    syncing_ = false;
}

void SpriteTableModel::ViewCurrentChanged(const QModelIndex& current) {
    if (syncing_ || !current.isValid()) return;
    table_.Select(current.row() + 1);
}

void SetUpSpriteList(QTableView& view, SpriteTableModel& model) {
    view.setModel(&model);
    view.setSelectionModel(&model.Selection());
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::SingleSelection);
    view.setEditTriggers(QAbstractItemView::NoEditTriggers);
    view.setSortingEnabled(false);
    view.setShowGrid(false);
    view.setWordWrap(false);
    view.setCornerButtonEnabled(false);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView& header = *view.horizontalHeader();
    header.setSectionsClickable(false);
    header.setSectionsMovable(false);
    header.setHighlightSections(false);
    header.setStretchLastSection(false);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    // The user may drag a visible column's width, as on any report list; the program
    // itself never changes the widths.
    header.setSectionResizeMode(QHeaderView::Interactive);
    for (int c = 0; c < kColumnCount; ++c) {
        const int width = platform::Pixels(kColumnWidthTwips[static_cast<size_t>(c)]);
        view.setColumnHidden(c, width == 0);
        if (width > 0) view.setColumnWidth(c, width);
    }
    FitRowHeight(view);
}

void FitRowHeight(QTableView& view) {
    view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 3);
}

}  // namespace tarvolin
