#pragma once
// The fixed texts of the gallery pages. "\n" is a line end; the page writer
// turns it into carriage return and line feed. The head declares utf-8, the
// code page of file names and titles on this system.

namespace tivox {

inline constexpr char g_picsUrl[] = "pics/";
inline constexpr char g_thumbsUrl[] = "pics/thumbs/";
inline constexpr char g_thumbPageHead[] =
    "<html><head>\n<title>TivoxPlus Gallery</title>\n"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n</head>\n"
    "<body bgcolor=\"#000000\" text=\"#0000FF\">\n"
    "<div align=\"center\"><font size=\"6\" face=\"Verdana, Arial, Helvetica, sans-serif\" "
    "color=\"#FFFFFF\"><b>";
inline constexpr char g_thumbPageTable[] =
    "</b></font>\n<table border=\"0\" cellspacing=\"0\" cellpadding=\"8\">\n";
inline constexpr char g_thumbPageTail[] = "</table>\n</div>\n</body>\n</html>\n";
inline constexpr char g_navRowHead[] =
    "<tr><td><table border=\"0\" cellspacing=\"0\" cellpadding=\"0\">\n<tr>";
inline constexpr char g_navRowTail[] = "</tr></table></td></tr>\n";
inline constexpr char g_photoPageHead[] =
    "<html><head>\n<title>TivoxPlus Gallery</title>\n"
    "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n</head>\n"
    "<body bgcolor=\"#000000\" text=\"#0000FF\">\n";
inline constexpr char g_photoPageTable[] =
    "<div align=\"center\">\n<table border=\"0\" cellspacing=\"0\" cellpadding=\"0\">\n";
inline constexpr char g_photoPageTableEnd[] = "</table>\n</div>\n";
inline constexpr char g_photoPageTail[] = "</body>\n</html>\n";
inline constexpr char g_navFont[] =
    "<font size=\"2\" face=\"Verdana, Arial, Helvetica, sans-serif\">";
inline constexpr char g_rowOpen[] = "<tr>";
inline constexpr char g_rowClose[] = "</tr>\n";
inline constexpr char g_thumbCellOpen[] = "<td align=\"center\"><a href=\"";
inline constexpr char g_thumbCellImage[] = "\"><img src=\"";
inline constexpr char g_thumbCellClose[] = "\" border=\"0\"></a></td>\n";
inline constexpr char g_photoCellOpen[] = "<td><img src=\"";
inline constexpr char g_photoCellClose[] = "\" border=\"0\"></td>\n";
inline constexpr char g_navCell[] = "<td>";
inline constexpr char g_navBack[] = "< ";
inline constexpr char g_linkOpen[] = "<a href=\"";
inline constexpr char g_linkTarget[] = "\">";
inline constexpr char g_linkClose[] = "</a>";
inline constexpr char g_navFirstEnd[] = "&nbsp;</font></td><td>";
inline constexpr char g_navHome[] = "&nbsp;^ <a href=\"thumbs1.html\">";
inline constexpr char g_navGallery[] = "&nbsp;^ <a href=\"";
inline constexpr char g_navMiddleEnd[] = "</a>&nbsp;</font></td><td>";
inline constexpr char g_navForward[] = "&nbsp;> ";
inline constexpr char g_navLastEnd[] = "</font></td>";
inline constexpr char g_lineBreak[] = "<br>";

} // namespace tivox
