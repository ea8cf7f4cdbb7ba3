#!/usr/bin/env python3
"""look.py CMSDP AXE OUT: pages of explain --html in headless Chromium.

Takes pictures of each page in both themes, 390 pixels wide and as it is printed, and fails when the console has
a message, axe-core finds a violation, a page is wider than its window, anything but the file is loaded, or a
hostile text gets beyond being text. AXE is axe.min.js; pictures and pages go to the directory OUT.
"""
import base64
import json
import pathlib
import subprocess
import sys

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

ROOT = pathlib.Path(__file__).resolve().parents[2]
CMSDP, AXE, OUT = (pathlib.Path(word).resolve() for word in sys.argv[1:])
sys.path.insert(0, str(ROOT / "tests" / "page"))
from cases import CASES, HOSTILE  # noqa: E402

THEMES = ["light", "dark"]
WIDTHS = [1280, 390]
problems = []


def check(is_right, problem):
    if not is_right:
        problems.append(problem)


def browser():
    options = webdriver.ChromeOptions()
    for word in ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--force-device-scale-factor=1",
                 "--hide-scrollbars"]:
        options.add_argument(word)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))


def loaded(driver):
    """The addresses that were asked for since the last call."""
    for entry in driver.get_log("performance"):
        message = json.loads(entry["message"])["message"]
        if message["method"] == "Network.requestWillBeSent":
            yield message["params"]["request"]["url"]


def make(name, case):
    """The page of a case, in a folder of its own."""
    folder = OUT / name
    folder.mkdir(parents=True, exist_ok=True)
    for file, text in case["files"].items():
        (folder / file).parent.mkdir(parents=True, exist_ok=True)
        (folder / file).write_bytes(text)
    page = OUT / f"{name}.html"
    run = subprocess.run([CMSDP, "explain", "--html", page, *case["words"]], cwd=folder, capture_output=True)
    check(run.returncode == 0, f"{name}: {run.stderr}")
    return page


def open_page(driver, page, theme, width):
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                           {"features": [{"name": "prefers-color-scheme", "value": theme}]})
    driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                           {"width": width, "height": 844, "deviceScaleFactor": 1, "mobile": False})
    driver.get(page.as_uri())


def picture(driver, file, width, most=12000, scale=1):
    """The page from its top, at most so many pixels of it."""
    height = min(driver.execute_script("return document.documentElement.scrollHeight"), most)
    shot = driver.execute_cdp_cmd("Page.captureScreenshot", {
        "captureBeyondViewport": True,
        "clip": {"x": 0, "y": 0, "width": width, "height": height, "scale": scale}})
    file.write_bytes(base64.b64decode(shot["data"]))


def violations(driver):
    driver.execute_script(AXE.read_text())
    found = driver.execute_async_script("axe.run(document).then(arguments[arguments.length - 1])")
    for violation in found["violations"]:
        places = [node["target"] for node in violation["nodes"][:3]]
        yield f"{violation['id']}: {violation['help']} {places}"


def look(driver, page, theme, width):
    name = f"{page.stem}-{theme}-{width}"
    list(loaded(driver))
    open_page(driver, page, theme, width)
    urls = set(loaded(driver))
    check(urls <= {page.as_uri()}, f"{name}: loads {urls}")
    wide = driver.execute_script("return document.documentElement.scrollWidth")
    check(wide <= width, f"{name}: {wide} pixels wide")
    picture(driver, OUT / f"{name}.png", width)
    for violation in violations(driver):
        problems.append(f"{name}: {violation}")
    for entry in driver.get_log("browser"):
        problems.append(f"{name}: console: {entry['message']}")


def check_joined(driver, page):
    """A finding lights up when the focus is on a link to it, and the target of a link is shown."""
    open_page(driver, page, "light", 1280)
    link = driver.find_element(By.CSS_SELECTOR, ".sdp li a")
    anchor = link.get_attribute("href").partition("#")[2]
    lit = f"return getComputedStyle(document.getElementById('{anchor}')).outlineStyle"
    check(driver.execute_script(lit) == "none", "a finding is lit from the start")
    driver.execute_script("arguments[0].focus()", link)
    check(driver.execute_script(lit) == "solid", "a finding is not lit by the focus on its line")
    link.send_keys(Keys.ENTER)
    check(driver.execute_script("return location.hash") == "#" + anchor, "the key Enter does not follow a link")
    open_page(driver, page, "light", 1280)
    line = driver.find_element(By.CSS_SELECTOR, f".sdp .{anchor} code")
    webdriver.ActionChains(driver).move_to_element(line).perform()
    check(driver.execute_script(lit) == "solid", "a finding is not lit by the pointer on its line")
    driver.get(page.as_uri())
    driver.find_element(By.TAG_NAME, "body").send_keys(Keys.TAB)
    check(driver.execute_script("return document.activeElement.tagName") == "A", "the key Tab finds no link")


def check_inert(driver, page, text):
    """Nothing of a hostile text became an element, an attribute or a script."""
    open_page(driver, page, "light", 1280)
    count = driver.execute_script(
        "return document.querySelectorAll('script, img, iframe, object, embed, link, base, form, input').length")
    check(count == 0, f"{page.stem}: {count} elements that no page has")
    outward = driver.execute_script(
        "return [...document.querySelectorAll('*')].flatMap(e => [...e.attributes].map(a => [a.name, a.value]))"
        ".filter(([n, v]) => n.startsWith('on') || n == 'src' || (n.endsWith('href') && v[0] != '#'))")
    check(not outward, f"{page.stem}: attributes {outward}")
    check(driver.execute_script("return window.broken === undefined"), f"{page.stem}: a script ran")
    styles = driver.execute_script("return document.querySelectorAll('style').length")
    check(styles == 1, f"{page.stem}: {styles} style sheets")
    source = page.read_bytes()
    check(all(byte == 10 or 32 <= byte < 127 for byte in source), f"{page.stem}: bytes that do not print")
    check(text[:40] not in source or b"<" not in text, f"{page.stem}: the text is there unescaped")


def main():
    OUT.mkdir(parents=True, exist_ok=True)
    driver = browser()
    try:
        for name, case in CASES.items():
            page = make(name, case)
            for theme in THEMES:
                for width in WIDTHS:
                    look(driver, page, theme, width)
            printed = driver.execute_cdp_cmd("Page.printToPDF", {"printBackground": True})
            (OUT / f"{name}.pdf").write_bytes(base64.b64decode(printed["data"]))
        check_joined(driver, OUT / "offer.html")
        for name, text in HOSTILE.items():
            page = make(f"hostile-{name}", {"files": {"offer.sdp": text}, "words": ["offer.sdp"]})
            check_inert(driver, page, text)
            look(driver, page, "light", 390)
        open_page(driver, OUT / "pair.html", "light", 1280)
        picture(driver, OUT / "report.png", 1280, most=1100, scale=0.75)
    finally:
        driver.quit()
    for problem in problems:
        print(problem)
    print(f"{len(CASES)} pages and {len(HOSTILE)} hostile texts: {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
