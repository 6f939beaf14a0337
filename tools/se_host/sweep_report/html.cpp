#include "tools/se_host/sweep_report/html.h"

#include <cstdint>

namespace se_host::report {
namespace {

// gnuplot draws in black what has to follow the page's colour.
constexpr const char* kStyle = R"(
:root { color-scheme: light dark; --ground: #ffffff; --ink: #1b1f24; --soft: #5b6570; --line: #d9dee4; --panel: #f5f7f9;
  --gain: #0b6e3b; --gain-ground: #e2f4e9; --loss: #a4262c; --loss-ground: #fbe7e7; --accent: #0b5cad; }
@media (prefers-color-scheme: dark) { :root { --ground: #14171a; --ink: #e6e9ec; --soft: #9aa5b1; --line: #343b43;
  --panel: #1c2126; --gain: #6fd49b; --gain-ground: #16301f; --loss: #ff9a94; --loss-ground: #3a1a1a; --accent: #79b8ff; } }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1.5rem clamp(0.8rem, 3vw, 2.5rem) 4rem; max-width: 1240px; background: var(--ground);
  color: var(--ink); font: 16px/1.5 system-ui, "DejaVu Sans", "Segoe UI", sans-serif; overflow-wrap: anywhere; }
h1 { font-size: 1.7rem; line-height: 1.25; margin: 0 0 0.3rem; }
h2 { font-size: 1.3rem; margin: 2.6rem 0 0.6rem; padding-top: 0.8rem; border-top: 1px solid var(--line); }
h3 { font-size: 1.05rem; margin: 2rem 0 0.4rem; }
p, li { max-width: 75ch; }
.soft, figcaption, .caption { color: var(--soft); }
.caption, figcaption { font-size: 0.88rem; margin: 0.8rem 0 0.2rem; }
.findings { background: var(--panel); border-left: 4px solid var(--accent); padding: 0.4rem 1rem; border-radius: 4px; }
.findings h3 { margin: 1.2rem 0 0.3rem; } .findings h3 b { font-weight: 700; } .findings p { margin: 0.4rem 0 0; }
.findings ul { margin: 0.2rem 0 0.6rem; padding-left: 1.3rem; } .findings li { margin: 0.15rem 0; max-width: 95ch; }
.findings span { padding: 0.05rem 0.4rem; border-radius: 3px; font-size: 0.9rem; }
.wide { overflow-x: auto; margin: 0.6rem 0 1rem; }
table { border-collapse: collapse; font-size: 0.88rem; font-variant-numeric: tabular-nums; }
th, td { padding: 0.3rem 0.7rem; border-bottom: 1px solid var(--line); text-align: right; vertical-align: top;
  white-space: nowrap; overflow-wrap: normal; }
th:first-child, td:first-child, td.words { text-align: left; }
td.words { white-space: normal; overflow-wrap: anywhere; min-width: 12rem; }
th { font-weight: 600; vertical-align: bottom; } thead th { white-space: normal; }
tbody th { font-weight: 500; vertical-align: top; min-width: 9rem; position: sticky; left: 0; background: var(--ground); }
th.name { white-space: normal; min-width: 7rem; max-width: 16rem; overflow-wrap: anywhere; } th small { font-weight: 400; }
td small { display: block; color: var(--soft); font-size: 0.8rem; }
.gain { color: var(--gain); background: var(--gain-ground); }
.loss { color: var(--loss); background: var(--loss-ground); }
figure { margin: 0.8rem 0 1.2rem; }
figure svg { display: block; width: 100%; min-width: 560px; max-width: 900px; height: auto; }
figure svg [fill="black"] { fill: currentColor; }
figure svg [stroke="black"] { stroke: currentColor; }
figure svg g[color="black"] { color: inherit; }
figure svg text { font-family: system-ui, "DejaVu Sans", sans-serif; }
figure img { display: block; width: 100%; max-width: 900px; height: auto; border: 1px solid var(--line); border-radius: 4px; }
code, pre { font-family: ui-monospace, "DejaVu Sans Mono", monospace; font-size: 0.85em; }
pre { background: var(--panel); padding: 0.6rem 0.8rem; border-radius: 4px; white-space: pre-wrap; overflow-wrap: anywhere; }
details { margin: 0.6rem 0; }
summary { cursor: pointer; color: var(--accent); }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 0.2rem 1.2rem; margin: 0.8rem 0; }
dt { color: var(--soft); } dd { margin: 0; }
@media (max-width: 40rem) { dl { grid-template-columns: 1fr; } dd { margin-bottom: 0.5rem; } tbody th { max-width: 9rem;
  white-space: normal; } }
@media print { details > * { display: block; } }
)";

constexpr char kBase64[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

uint32_t byteAt(std::string_view bytes, size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        switch (c) {
            case '&':
                safe += "&amp;";
                break;
            case '<':
                safe += "&lt;";
                break;
            case '>':
                safe += "&gt;";
                break;
            case '"':
                safe += "&quot;";
                break;
            case '\'':
                safe += "&#39;";
                break;
            default:
                safe += c;
        }
    }
    return safe;
}

std::string element(const std::string& tag, const std::string& content, const std::string& attributes) {
    return "<" + tag + (attributes.empty() ? "" : " " + attributes) + ">" + content + "</" + tag + ">\n";
}

std::string imageData(std::string_view png) {
    std::string text = "data:image/png;base64,";
    for (size_t i = 0; i < png.size(); i += 3) {
        const uint32_t three = byteAt(png, i) << 16 | byteAt(png, i + 1) << 8 | byteAt(png, i + 2);
        text += kBase64[three >> 18];
        text += kBase64[three >> 12 & 63];
        text += i + 1 < png.size() ? kBase64[three >> 6 & 63] : '=';
        text += i + 2 < png.size() ? kBase64[three & 63] : '=';
    }
    return text;
}

std::string document(const std::string& title, const std::string& body) {
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n" +
           element("title", escaped(title)) + element("style", kStyle) + "</head>\n<body>\n" + body +
           "</body>\n</html>\n";
}

}  // namespace se_host::report
