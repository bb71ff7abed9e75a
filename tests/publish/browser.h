#pragma once

#include <array>
#include <cstdio>
#include <string>

#include "base/paths.h"
#include "testing/temporary_folder.h"

namespace norvelis {

/// What a headless browser finds when it opens a page, follows its links to each place once and types
/// `search` into its search: "links: N", a line for each fault, and "found: N", the records that the list
/// then shows.
inline std::string WalkPage(const std::string& page, const std::string& search) {
    // The page as it is, with ears before its first script and feet behind its last.
    const std::string listen = R"(<head><script>
        var faults = [];
        addEventListener('error', function (event) {
            faults.push('error: ' + (event.message || event.target.outerHTML));
        }, true);
        ['error', 'warn'].forEach(function (kind) {
            console[kind] = function (text) { faults.push(kind + ': ' + text); };
        });
    </script>)";
    const std::string walk = R"(<script>addEventListener('load', function () {
        var links = Array.from(document.querySelectorAll('a'));
        var followed = new Set();
        links.forEach(function (link) {
            var address = link.getAttribute('href') || link.getAttribute('xlink:href');
            var name = (link.getAttribute('aria-label') || link.textContent).trim();
            if (name === '') faults.push('no name: ' + address);
            if (address.charAt(0) !== '#' || !document.getElementById(address.slice(1))) {
                faults.push('leads nowhere: ' + address);
                return;
            }
            if (followed.has(address)) return;  // A browser takes only so many steps in a short time.
            followed.add(address);
            link.dispatchEvent(new MouseEvent('click', { bubbles: true, cancelable: true }));
            if (location.hash !== address) faults.push('not followed: ' + address);
        });
        var ids = Array.from(document.querySelectorAll('[id]'), function (element) { return element.id; });
        if (new Set(ids).size !== ids.length) faults.push('an id is there twice');
        ['header', 'nav', 'main', 'footer', 'h1'].forEach(function (name) {
            if (document.querySelectorAll('body ' + name).length !== 1) faults.push('not one ' + name);
        });
        var level = 1;
        document.querySelectorAll('h2, h3, h4').forEach(function (heading) {
            var next = Number(heading.tagName.charAt(1));
            if (next > level + 1) faults.push('no heading above: ' + heading.textContent);
            level = next;
        });
        var field = document.getElementById('search');
        field.value = document.body.dataset.search;
        field.dispatchEvent(new Event('input'));
        var left = document.querySelectorAll('#record-list li:not([hidden])').length;
        document.body.textContent = ['links: ' + links.length].concat(faults, 'found: ' + left).join('\n');
    });</script></body>)";
    const TemporaryFolder folder;
    std::string text = ReadFile(page);
    const auto replace = [&text](const std::string& what, const std::string& with) {
        const auto place = text.find(what);
        if (place != std::string::npos) text.replace(place, what.size(), with);
    };
    replace("<head>", listen);
    replace("<body>", "<body data-search=\"" + search + "\">");
    replace("</body>", walk);
    WriteFile(folder.Path("walk.html"), text);
    const std::string command =
        "HOME=" + folder.Path() +
        " chromium-headless-shell --no-sandbox --disable-gpu --user-data-dir=" + folder.Path("profile") +
        " --dump-dom file://" + folder.Path("walk.html") + " 2>" + folder.Path("errors");
    std::string dom;
    std::FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        dom.append(buffer.data(), count);
    if (pclose(pipe) != 0) return ReadFile(folder.Path("errors"));
    const auto begin = dom.find("links: "), end = dom.find("</body>");
    return begin < end && end != std::string::npos ? dom.substr(begin, end - begin) : dom;
}

}  // namespace norvelis
