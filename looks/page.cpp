#include "page.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include <nlohmann/json.hpp>

namespace vesk::looks {

namespace {

constexpr char kBeforeData[] = R"(<!doctype html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>VESK: every state of the screen</title>
<style>
  body { font: 15px/1.4 system-ui, sans-serif; margin: 0; background: #12181c; color: #e8eef1; }
  header { position: sticky; top: 0; background: #1b242a; padding: 12px 20px; display: flex; flex-wrap: wrap;
           gap: 12px 20px; align-items: baseline; }
  h1 { font-size: 18px; margin: 0; }
  label { white-space: nowrap; }
  select { font: inherit; }
  main { display: grid; gap: 16px; padding: 20px; grid-template-columns: repeat(auto-fill, minmax(320px, 1fr)); }
  figure { margin: 0; background: #1b242a; border-radius: 6px; overflow: hidden; }
  figure.wrong { outline: 3px solid #ff5c8a; }
  figure a { display: block; text-align: center; background: #000; }
  img { max-width: 100%; max-height: 320px; vertical-align: top; }
  figcaption { padding: 8px 12px; }
  figcaption small { color: #9fb1ba; display: block; }
  figcaption li { color: #ff9dba; }
  ul { margin: 4px 0 0; padding-left: 18px; }
</style>
<header>
  <h1>Every state of the screen</h1>
  <span id="filters"></span>
  <label><input type="checkbox" id="wrong"> only with findings</label>
  <output id="count"></output>
</header>
<main id="sheet"></main>
<script>
const entries = )";

constexpr char kAfterData[] = R"(;
const axes = ["state", "product", "form", "language", "contrast", "scale"];
const chosen = {};
const make = (name, text) => { const e = document.createElement(name); if (text) e.textContent = text; return e; };
for (const axis of axes) {
  const label = make("label", axis + " ");
  const select = make("select");
  select.append(new Option("all", ""));
  for (const value of new Set(entries.map(entry => entry[axis]))) select.append(new Option(value, value));
  select.onchange = () => { chosen[axis] = select.value; show(); };
  label.append(select);
  document.getElementById("filters").append(label, " ");
}
const wrong = document.getElementById("wrong");
wrong.onchange = show;
function show() {
  const seen = entries.filter(entry => axes.every(axis => !chosen[axis] || String(entry[axis]) === chosen[axis]) &&
                                       (!wrong.checked || entry.findings.length));
  document.getElementById("count").textContent = seen.length + " of " + entries.length;
  document.getElementById("sheet").replaceChildren(...seen.map(entry => {
    const figure = make("figure");
    if (entry.findings.length) figure.className = "wrong";
    const link = make("a");
    link.href = entry.picture;
    const image = make("img");
    image.loading = "lazy";
    image.src = entry.thumbnail;
    image.alt = entry.title;
    link.append(image);
    const caption = make("figcaption", entry.title);
    caption.append(make("small", axes.map(axis => entry[axis]).join(" · ")));
    if (entry.findings.length) {
      const list = make("ul");
      list.append(...entry.findings.map(finding => make("li", finding)));
      caption.append(list);
    }
    figure.append(link, caption);
    return figure;
  }));
}
show();
</script>
</html>
)";

} // namespace

void write_page(const std::filesystem::path &folder, const std::vector<PageEntry> &entries)
{
    auto data = nlohmann::json::array();
    std::vector<const PageEntry *> sorted; /* those with findings first */
    for (const auto &entry : entries)
        sorted.push_back(&entry);
    std::stable_partition(sorted.begin(), sorted.end(),
                          [](const PageEntry *entry) { return !entry->findings.empty(); });
    for (const auto *shown : sorted) {
        const auto &entry = *shown;
        data.push_back({{"state", entry.state->name},
                        {"title", entry.state->title},
                        {"product", entry.setting.product},
                        {"form", entry.setting.portrait ? "portrait" : "landscape"},
                        {"language", entry.setting.language},
                        {"contrast", entry.setting.high_contrast ? "high" : "normal"},
                        {"scale", entry.setting.scale},
                        {"picture", entry.picture},
                        {"thumbnail", entry.thumbnail},
                        {"findings", entry.findings}});
    }
    /* A finding quotes texts of the screen: none of them may end the script. */
    auto text = data.dump(1);
    for (size_t found = 0; (found = text.find("</", found)) != text.npos; found += 3)
        text.replace(found, 2, "<\\/");

    std::ofstream page;
    page.exceptions(std::ios::failbit | std::ios::badbit);
    page.open(folder / "index.html");
    page << kBeforeData << text << kAfterData;
}

} // namespace vesk::looks
