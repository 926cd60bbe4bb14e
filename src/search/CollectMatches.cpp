#include "search/CollectMatches.h"

#include "platform/Drives.h"

namespace
{
/// Looks for the term in cells of a grid.
class TermFinder
{
public:
    TermFinder(const Grid &searched, const SearchQuery &query)
        : grid(searched), caseSensitive(query.CaseSensitive),
          term(query.CaseSensitive ? query.Term : query.Term.toLower()), folders(searched.PoolSize(), Unknown)
    {
    }

    bool IsIn(int row, int column)
    {
        return column == ColumnPath ? IsInFolder(grid.Item(row)) : IsInText(grid.CellText(row, column));
    }

private:
    enum Answer : qint8 { Unknown, Absent, Present };

    bool IsInText(const QString &text) const
    {
        const QString shown = ShownPath(text);
        return (caseSensitive ? shown : shown.toLower()).contains(term);
    }

    /// Many rows share a folder, which is looked through once.
    bool IsInFolder(const PlaylistItem &item)
    {
        Answer &answer = folders[item.FolderNumber];
        if (answer == Unknown)
            answer = IsInText(item.Folder) ? Present : Absent;
        return answer == Present;
    }

    const Grid &grid;
    bool caseSensitive;
    QString term;
    std::vector<Answer> folders;
};
} // namespace

std::vector<qint16> CollectMatches(const Grid &grid, const SearchQuery &query)
{
    TermFinder finder(grid, query);
    std::vector<qint16> matches;
    for (int row = 1; row <= grid.Count(); ++row) {
        if (query.SelectedOnly && !grid.Item(row).Selected)
            continue;
        if (std::any_of(query.Columns.cbegin(), query.Columns.cend(),
                        [&](int column) { return finder.IsIn(row, column); }))
            matches.push_back(static_cast<qint16>(row));
    }
    return matches;
}
