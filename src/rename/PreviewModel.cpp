#include "rename/PreviewModel.h"

#include "platform/Drives.h"
#include "session/Colours.h"
#include "session/Icons.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPalette>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr int columnNewName = 1;

/// Why an item is not renamed; empty for one that is, or that keeps its name.
QString Reason(PreviewState state)
{
    switch (state) {
    case PreviewState::SameFile:
        return u"The same file as in an earlier row: it is renamed once."_s;
    case PreviewState::Taken:
        return u"An earlier item of the selection gets this name: this one keeps its own."_s;
    case PreviewState::Exists:
        return u"A file of this name stands in the folder: this item keeps its name."_s;
    case PreviewState::Refused:
        return u"A name can hold no separator of folders: this item keeps its name."_s;
    case PreviewState::Missing:
        return u"The file is not there."_s;
    case PreviewState::Unchanged:
    case PreviewState::Renamed:
        break;
    }
    return QString();
}

/// Still to be read.
QColor Dimmed(const QPalette &palette)
{
    return Blend(palette.color(QPalette::Text), palette.color(QPalette::Base), 55);
}

QString ToolTip(const QString &name, PreviewState state)
{
    const QString reason = Reason(state);
    const QString shown = ShownPath(name);
    return reason.isEmpty() ? shown : shown + u'\n' + reason;
}
} // namespace

PreviewModel::PreviewModel(QObject *parent)
    : QAbstractTableModel(parent), collides(Icon("row-red"_L1)), missing(Icon("row-missing"_L1))
{
}

void PreviewModel::Show(std::vector<PreviewItem> shown)
{
    beginResetModel();
    items = std::move(shown);
    endResetModel();
}

int PreviewModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(items.size());
}

int PreviewModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant PreviewModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const PreviewItem &item = items[static_cast<std::size_t>(index.row())];
    const bool isNew = index.column() == columnNewName;
    const QString &name = isNew ? item.NewName : item.OldName;
    switch (role) {
    case Qt::DisplayRole:
        return ShownPath(name);
    case Qt::ToolTipRole:
        return ToolTip(name, item.State);
    case Qt::SizeHintRole:
        // Names in any script have room.
        return QSize(0, QFontMetrics(QGuiApplication::font()).height() * 3 / 2);
    case Qt::ForegroundRole:
        if (item.State != PreviewState::Renamed)
            return Dimmed(QGuiApplication::palette());
        break;
    case Qt::DecorationRole:
        if (isNew && item.State == PreviewState::Missing)
            return missing;
        if (isNew && !Reason(item.State).isEmpty())
            return collides;
        break;
    default:
        break;
    }
    return {};
}

QVariant PreviewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == columnNewName ? u"New name"_s : u"Present name"_s;
}
