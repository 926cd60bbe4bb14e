#include "media/ID3v22Frames.h"

#include <QStringBuilder>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{
struct Renamed {
    std::string_view Old;
    std::string_view New;
};

// In the order of the old ids. Those from TCP to WFD that 2.2 does not define are in use all the same.
constexpr Renamed renamedFrames[] = {
    {"BUF", "RBUF"}, {"CNT", "PCNT"}, {"COM", "COMM"}, {"CRA", "AENC"}, {"EQU", "EQUA"}, {"ETC", "ETCO"},
    {"GEO", "GEOB"}, {"GP1", "GRP1"}, {"IPL", "IPLS"}, {"LNK", "LINK"}, {"MCI", "MCDI"}, {"MLL", "MLLT"},
    {"MVI", "MVIN"}, {"MVN", "MVNM"}, {"PCS", "PCST"}, {"PIC", "APIC"}, {"POP", "POPM"}, {"REV", "RVRB"},
    {"RVA", "RVAD"}, {"SLT", "SYLT"}, {"STC", "SYTC"}, {"TAL", "TALB"}, {"TBP", "TBPM"}, {"TCM", "TCOM"},
    {"TCO", "TCON"}, {"TCP", "TCMP"}, {"TCR", "TCOP"}, {"TCT", "TCAT"}, {"TDA", "TDAT"}, {"TDS", "TDES"},
    {"TDY", "TDLY"}, {"TEN", "TENC"}, {"TFT", "TFLT"}, {"TID", "TGID"}, {"TIM", "TIME"}, {"TKE", "TKEY"},
    {"TKW", "TKWD"}, {"TLA", "TLAN"}, {"TLE", "TLEN"}, {"TMT", "TMED"}, {"TOA", "TOPE"}, {"TOF", "TOFN"},
    {"TOL", "TOLY"}, {"TOR", "TORY"}, {"TOT", "TOAL"}, {"TP1", "TPE1"}, {"TP2", "TPE2"}, {"TP3", "TPE3"},
    {"TP4", "TPE4"}, {"TPA", "TPOS"}, {"TPB", "TPUB"}, {"TRC", "TSRC"}, {"TRD", "TRDA"}, {"TRK", "TRCK"},
    {"TS2", "TSO2"}, {"TSA", "TSOA"}, {"TSC", "TSOC"}, {"TSI", "TSIZ"}, {"TSP", "TSOP"}, {"TSS", "TSSE"},
    {"TST", "TSOT"}, {"TT1", "TIT1"}, {"TT2", "TIT2"}, {"TT3", "TIT3"}, {"TXT", "TEXT"}, {"TXX", "TXXX"},
    {"TYE", "TYER"}, {"UFI", "UFID"}, {"ULT", "USLT"}, {"WAF", "WOAF"}, {"WAR", "WOAR"}, {"WAS", "WOAS"},
    {"WCM", "WCOM"}, {"WCP", "WCOP"}, {"WFD", "WFED"}, {"WPB", "WPUB"}, {"WXX", "WXXX"},
};
} // namespace

QByteArray ID3v23Id(const QByteArray &id)
{
    const std::string_view old(id.constData(), static_cast<std::size_t>(id.size()));
    const auto *const found =
        std::lower_bound(std::begin(renamedFrames), std::end(renamedFrames), old,
                         [](const Renamed &frame, std::string_view key) { return frame.Old < key; });
    if (found == std::end(renamedFrames) || found->Old != old)
        return 'X' + id;
    return QByteArray(found->New.data(), static_cast<qsizetype>(found->New.size()));
}

QByteArray ID3v23Picture(const QByteArray &data)
{
    constexpr qsizetype encodingBytes = 1;
    constexpr qsizetype formatBytes = 3;
    if (data.size() <= encodingBytes + formatBytes)
        return QByteArray();
    const QByteArray format = data.sliced(encodingBytes, formatBytes).toLower();
    QByteArray type = format == "-->" ? format : "image/" + format;
    if (format == "jpg")
        type = "image/jpeg";
    return data.first(encodingBytes) + type + '\0' + data.sliced(encodingBytes + formatBytes);
}
