#include "mainwin/ui/SpriteTableModel.h"

#include <utility>

#include <QHeaderView>
#include <QTableView>

#include "base/TextHelpers.h"
#include "config/MessageCatalog.h"

namespace tarvolin {

namespace {
// The default titles: the captions MAIN_LST_1..9, the fixed one of PcxPath, then Palette.
std::array<QString, kListColumns> DefaultTitles() {
    std::array<QString, kListColumns> titles;
    int n = 0;
    for (const CaptionEntry& c : CaptionTable()) {
        if (QString::fromUtf8(c.Key).startsWith(QStringLiteral("MAIN_LST_")) && n < kColumnCount - 1)
            titles[static_cast<size_t>(n++)] = QString::fromUtf8(c.Default);
    }
    titles[kColumnCount - 1] = QString::fromUtf8(kPcxPathTitle);
    titles[kPaletteColumn] = QStringLiteral("Palette");
    return titles;
}

// What each column usually holds at its widest, for its width.
constexpr std::array<const char*, kListColumns> kWidestText = {
    "00000", "GroupNo", "ItemNo", "PalType", "0090000000", "P.Pos", "character_09000_00000.pcx", "-0000",
    "-0000", "/home/user/sprites/", "as 9000,0"};
}  // namespace

SpriteTableModel::SpriteTableModel(SpriteTable& table, const SffState& state)
    : table_(table), state_(state), shownRows_(table.RowCount()), titles_(DefaultTitles()), selection_(this) {
    table_.SetObserver(this);
    connect(&selection_, &QItemSelectionModel::currentRowChanged, this, [this] { ViewSelectionChanged(); });
    connect(&selection_, &QItemSelectionModel::selectionChanged, this, [this] { ViewSelectionChanged(); });
    SelectionChanged(table_.Selected());
}

void SpriteTableModel::SetPaletteWords(PaletteWords words) {
    words_ = std::move(words);
    if (shownRows_ > 0) emit dataChanged(index(0, kPaletteColumn), index(shownRows_ - 1, kPaletteColumn));
}

void SpriteTableModel::ForgetPlaces() { placeOfSubfile_.clear(); }

QString SpriteTableModel::PaletteText(const SpriteRow& row) const {
    if (!sources_) sources_.emplace(state_);
    const PaletteOrigin origin = sources_->Of(row);
    if (origin.Kind == PaletteKind::Shared) return words_.Shared;
    if (origin.Kind == PaletteKind::Own) return words_.Own;
    if (placeOfSubfile_.empty()) {
        placeOfSubfile_.assign(state_.Subfiles.size() + 1, 0);
        for (int place = table_.RowCount(); place >= 1; --place) {
            const auto pos = ParseNumber(table_.Cell(place, Column::PPos));
            if (pos && *pos >= 0 && *pos < static_cast<double>(state_.Subfiles.size()))
                placeOfSubfile_[static_cast<size_t>(*pos)] = place;
        }
    }
    // The row that shows that subfile now, by its present numbers; the subfile when none does.
    const int place = placeOfSubfile_[static_cast<size_t>(origin.Subfile)];
    if (place == 0) return words_.As + QStringLiteral(" P.Pos %1").arg(origin.Subfile);
    return words_.As + QLatin1Char(' ') + QString::fromStdString(table_.Cell(place, Column::GroupNo)) +
           QLatin1Char(',') + QString::fromStdString(table_.Cell(place, Column::ItemNo));
}

SpriteTableModel::~SpriteTableModel() { table_.SetObserver(nullptr); }

int SpriteTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shownRows_; }

int SpriteTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kListColumns; }

QVariant SpriteTableModel::data(const QModelIndex& index, int role) const {
    if ((role != Qt::DisplayRole && role != Qt::ToolTipRole) || !index.isValid()) return {};
    const int place = index.row() + 1;
    if (place > table_.RowCount() || index.column() >= kListColumns) return {};
    const SpriteRow& row = table_.Row(place);
    if (index.column() == kPaletteColumn) return PaletteText(row);
    const auto column = static_cast<Column>(index.column());
    // A tooltip gives the whole text of a cell too narrow for it; for PCX Name, with the
    // folder of a picture of its own.
    if (role == Qt::ToolTipRole && column == Column::PcxName)
        return QString::fromStdString(row[Column::PcxPath] + row[Column::PcxName]);
    return QString::fromStdString(row[column]);
}

QVariant SpriteTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kListColumns) return {};
    if (role == Qt::DisplayRole) return titles_[static_cast<size_t>(section)];
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

bool SpriteTableModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant& value, int role) {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= kListColumns)
        return false;
    titles_[static_cast<size_t>(section)] = value.toString();
    emit headerDataChanged(orientation, section, section);
    return true;
}

void SpriteTableModel::TableReset() {
    // One reset for a whole new table: a view of 10,000 rows then costs no more than one
    // of ten.
    // A new table may be a new file: the palettes are looked up anew.
    beginResetModel();
    shownRows_ = table_.RowCount();
    sources_.reset();
    ForgetPlaces();
    endResetModel();
}

// While rows come and go Qt moves its current row by itself; that move is not the user's
// choice and must not reach the table, whose own selection the view follows afterwards.
void SpriteTableModel::RowInserted(int place) {
    const bool wasSyncing = std::exchange(syncing_, true);
    beginInsertRows({}, place - 1, place - 1);
    shownRows_ = table_.RowCount();
    ForgetPlaces();
    endInsertRows();
    syncing_ = wasSyncing;
}

void SpriteTableModel::RowRemoved(int place) {
    const bool wasSyncing = std::exchange(syncing_, true);
    beginRemoveRows({}, place - 1, place - 1);
    shownRows_ = table_.RowCount();
    ForgetPlaces();
    endRemoveRows();
    syncing_ = wasSyncing;
}

void SpriteTableModel::CellChanged(int place, Column column) {
    const QModelIndex i = index(place - 1, static_cast<int>(column));
    emit dataChanged(i, i, {Qt::DisplayRole});
    // Rows that name this one in their Palette column show its new numbers.
    if ((column == Column::GroupNo || column == Column::ItemNo) && shownRows_ > 0)
        emit dataChanged(index(0, kPaletteColumn), index(shownRows_ - 1, kPaletteColumn), {Qt::DisplayRole});
    // A new picture or flag may change the palette the row is drawn with.
    if (column == Column::PalType || column == Column::PcxPath || column == Column::PcxName) {
        const QModelIndex palette = index(place - 1, kPaletteColumn);
        emit dataChanged(palette, palette, {Qt::DisplayRole});
    }
}

void SpriteTableModel::SelectionChanged(int place) {
    if (syncing_) return;
    syncing_ = true;
    QItemSelection marked;
    for (const int row : table_.SelectedRows()) {
        // Runs of neighbours as one range: a selection of thousands stays cheap.
        if (!marked.isEmpty() && marked.last().bottom() == row - 2)
            marked.last() = QItemSelectionRange(marked.last().topLeft(), index(row - 1, kListColumns - 1));
        else
            marked.append(QItemSelectionRange(index(row - 1, 0), index(row - 1, kListColumns - 1)));
    }
    if (place < 1) selection_.clear();
    else selection_.setCurrentIndex(index(place - 1, static_cast<int>(Column::GroupNo)), QItemSelectionModel::NoUpdate);
    selection_.select(marked, QItemSelectionModel::ClearAndSelect);
    syncing_ = false;
}

void SpriteTableModel::ViewSelectionChanged() {
    if (syncing_) return;
    const QModelIndex current = selection_.currentIndex();
    if (!current.isValid()) return;
    std::vector<int> marked;
    for (const QItemSelectionRange& range : selection_.selection())
        for (int row = range.top(); row <= range.bottom(); ++row) marked.push_back(row + 1);
    const int before = table_.Selected();
    syncing_ = true;
    table_.SelectRows(std::move(marked), current.row() + 1);
    syncing_ = false;
    if (table_.Selected() != before) emit CurrentRowMoved();
}

void SetUpSpriteList(QTableView& view, SpriteTableModel& model) {
    view.setModel(&model);
    view.setSelectionModel(&model.Selection());
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
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
    // The user may drag a column's width, as on any report list.
    header.setSectionResizeMode(QHeaderView::Interactive);
    // On screen the numbers the user edits come first and the keys of the opening last;
    // the columns themselves keep their order.
    constexpr int kShownOrder[] = {int(Column::GroupNo), int(Column::ItemNo), int(Column::AxisX), int(Column::AxisY),
                                   int(Column::PalType), kPaletteColumn,      int(Column::PPos),  int(Column::PcxName),
                                   int(Column::PcxPath), int(Column::SortNo), int(Column::SortKey)};
    for (int shown = 0; shown < kListColumns; ++shown)
        header.moveSection(header.visualIndex(kShownOrder[shown]), shown);
    FitRowHeight(view);
}

void FitRowHeight(QTableView& view) {
    view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 3);
    // Each column as wide as its title or its usual widest contents, in the list's font.
    const QFontMetrics metrics = view.fontMetrics();
    const QFontMetrics header = view.horizontalHeader()->fontMetrics();
    for (int c = 0; c < kListColumns; ++c) {
        const QString title = view.model()->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        view.setColumnWidth(c, std::max(header.horizontalAdvance(title), metrics.horizontalAdvance(kWidestText[size_t(c)])) + 14);
    }
}

}  // namespace tarvolin
