#!/usr/bin/env python3
"""Tries the built pages in a browser, as files: the search, the switch of language and how code looks.

    browse.py SITE [PICTURES]      PICTURES is a folder for screenshots of some pages
"""

import pathlib
import sys
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

# What is typed on which page, and a title that must be among the first five.
SEARCHES = [
    ("index.html", "width", "displayWidth()"),
    ("index.html", "encoding", "Windows and code pages"),
    ("index.html", "EAN", "mod10CheckDigit()"),
    ("index.html", "shift", "A Shift-JIS file on Unix"),
    ("index.html", "date", "normalizeDate()"),
    ("index.html", "Digit", "mod10CheckDigit()"),
    ("errors.html", "last error", "lastError"),
    ("classAppRuntime.html", "pad left", "padLeft()"),
    ("ja/index.html", "表示幅", "表示幅の規則"),
    ("ja/index.html", "文字コード", "エンコーディング"),
    ("ja/index.html", "日付", "normalizeDate()"),
    ("ja/index.html", "チェックディジット", "入力のチェック: チェックディジット"),
    ("ja/index.html", "displayWidth", "displayWidth()"),
]

CONTRAST = """
const channel = value => value <= 0.03928 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4
const luminance = colour => {
    const [r, g, b] = colour.match(/[\\d.]+/g).map(value => channel(value / 255))
    return 0.2126 * r + 0.7152 * g + 0.0722 * b
}
const weak = new Set()
for (const block of document.querySelectorAll("div.fragment, code")) {
    let behind = block
    while (behind.parentElement && getComputedStyle(behind).backgroundColor == "rgba(0, 0, 0, 0)")
        behind = behind.parentElement
    const ground = luminance(getComputedStyle(behind).backgroundColor)
    for (const part of [block, ...block.querySelectorAll(".line, .line span, .line a")]) {
        const ink = luminance(getComputedStyle(part).color)
        if ((Math.max(ground, ink) + 0.05) / (Math.min(ground, ink) + 0.05) < 4.5)
            weak.add(`${part.className} ${getComputedStyle(part).color}`)
    }
}
return [...weak]
"""

WIDTHS = """
return [...document.querySelectorAll("div.fragment.wide")].map(block => {
    const text = document.createElement("span")
    block.querySelector(".line").append(text)
    const widths = ["a", "ｱ", "漢"].map(character => {
        text.textContent = character.repeat(10)
        return text.getBoundingClientRect().width
    })
    text.remove()
    return widths
})
"""


def browser(profile):
    options = webdriver.ChromeOptions()
    for flag in (
        "headless no-sandbox disable-gpu disable-quic no-first-run disable-background-networking "
        "disable-component-update disable-sync hide-scrollbars"
    ).split():
        options.add_argument(f"--{flag}")
    options.add_argument(f"--user-data-dir={profile}")
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


def main():
    site = pathlib.Path(sys.argv[1]).resolve()
    pictures = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    failures = []
    with tempfile.TemporaryDirectory() as profile:
        chrome = browser(profile)

        def visit(page, width=1280, height=900, dark=False):
            chrome.execute_cdp_cmd(
                "Emulation.setDeviceMetricsOverride",
                {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 768},
            )
            scheme = [{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}]
            chrome.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": scheme})
            chrome.get((site / page).as_uri())

        for page, typed, wanted in SEARCHES:
            visit(page)
            field = chrome.find_element(By.CSS_SELECTOR, "#MSearchBox input")
            field.send_keys(typed)
            titles = [entry.text for entry in chrome.find_elements(By.CSS_SELECTOR, "#found li")]
            if not any(wanted in title for title in titles[:5]):
                failures.append(f"{page}: {typed} finds {titles[:5]}, not {wanted}")
                continue
            before = chrome.current_url
            field.send_keys(Keys.ENTER)
            if chrome.current_url == before:
                failures.append(f"{page}: Enter does not lead to {titles[0]}")

        # A link leads into a folded group of descriptions.
        visit("recipes.html")
        address = chrome.find_element(By.LINK_TEXT, "runProgram()").get_attribute("href")
        visit("classAppRuntime.html")
        chrome.get(address)
        member = chrome.find_element(By.ID, address.partition("#")[2])
        if not 0 <= chrome.execute_script("return arguments[0].nextElementSibling.getBoundingClientRect().top", member) < 900:
            failures.append(f"{address} is not in sight")

        pages = sorted([*site.glob("*.html"), *site.glob("ja/*.html")])
        for path in pages:
            page = path.relative_to(site).as_posix()
            for dark in (False, True):
                visit(page, 390, 844, dark)
                failures += [f"{page}: weak contrast of {what}, dark {dark}" for what in chrome.execute_script(CONTRAST)]
            if chrome.execute_script("return document.documentElement.scrollWidth") > 390:
                failures.append(f"{page} is wider than a phone")
            for half, kana, full in chrome.execute_script(WIDTHS):
                if not (half == kana and abs(full - 2 * half) < 0.1):
                    failures.append(f"{page}: widths {half}, {kana} and {full} of ten characters")
            target = chrome.find_element(By.ID, "language").get_attribute("href")
            if not pathlib.Path(target.removeprefix("file://")).is_file():
                failures.append(f"{page}: the switch of language leads to {target}")
            if pictures:
                for width, height in ((1280, 1600), (390, 1600)):
                    for dark in (False, True):
                        visit(page, width, height, dark)
                        name = f"{page.removesuffix('.html').replace('/', '-')}-{width}{'-dark' if dark else ''}.png"
                        chrome.save_screenshot(str(pictures / name))
        chrome.quit()
    print("\n".join(failures) or f"The browser found nothing wrong with {len(pages)} pages", file=sys.stderr if failures else sys.stdout)
    sys.exit(bool(failures))


main()
