// What the tests of the report share: runs, result files as they lie on the disk, and a browser.
import { execFileSync } from "node:child_process";
import { mkdtempSync, readdirSync, readFileSync, existsSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";

const required = name => process.env[name] || (() => { throw new Error(`${name} is not set`); })();
const PROGRAM = required("VERENWICK");
const EXAMPLES = required("VERENWICK_EXAMPLES");
const { chromium } = createRequire(join(required("NODE_PACKAGES"), "/"))("playwright-core");

export const scratch = mkdtempSync(join(tmpdir(), "verenwick-report-"));

/** The inputs of examples name their data files as seen from the project's root. */
export const verenwick = (...words) =>
  execFileSync(PROGRAM, words, { cwd: join(EXAMPLES, ".."), encoding: "utf8", stdio: ["ignore", "pipe", "pipe"] });

export const examples = readdirSync(EXAMPLES).filter(name => existsSync(join(EXAMPLES, name, "input.txt")));

/** Runs an input file and writes its report; where the three lie. */
export function reported(name, input) {
  const plant = { input, results: join(scratch, name), page: join(scratch, `${name}.html`) };
  verenwick("run", input, "--results", plant.results, "--quiet");
  verenwick("report", input, plant.results, "-o", plant.page);
  return plant;
}

export const example = name => reported(name, join(EXAMPLES, name, "input.txt"));

/** The numbers of a result file. */
export function records(plant, name) {
  const bytes = readFileSync(join(plant.results, `${name}.bin`));
  return Array.from({ length: bytes.length / 8 }, (_, i) => bytes.readDoubleLE(8 * i));
}

let browser = null;

export async function startBrowser() {
  browser = await chromium.launch({
    executablePath: required("CHROMIUM"),
    args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
      "--disable-background-networking", "--disable-component-update", "--disable-sync"],
  });
}

export const stopBrowser = () => browser.close();

/** Opens a report. `faults` gathers whatever the page says on its console, errors, and requests for
 * anything but the page itself; `milliseconds` is the time from the request to the built page. */
export async function open(plant, width = 1400) {
  const page = await browser.newPage({ viewport: { width, height: 900 } });
  const url = `file://${plant.page}`;
  page.faults = [];
  page.on("console", message => {
    if (!message.text().includes("getImageData")) { // the tests' own look at the pixels
      page.faults.push(`${message.type()}: ${message.text()}`);
    }
  });
  page.on("pageerror", error => page.faults.push(String(error)));
  page.on("request", request => {
    if (request.url() !== url) {
      page.faults.push(`asks for ${request.url()}`);
    }
  });
  await page.goto(url);
  await page.evaluate(() => { // what the page was made of
    window.data = JSON.parse(document.getElementById("data").textContent);
  });
  page.milliseconds = await page.evaluate(() => performance.timing.loadEventEnd - performance.timing.navigationStart);
  return page;
}

/** Draws every figure; for each its caption and the number of pixels of its curves: those that are
 * neither white nor a shade of grey, or darker than the grid. */
export const drawAll = page => page.evaluate(async () => {
  document.querySelectorAll("details").forEach(each => { each.open = true; });
  const figures = [...document.querySelectorAll("figure")].map(each => each.entry);
  figures.forEach(each => each.draw());
  await new Promise(resolve => setTimeout(resolve, 50));
  return figures.map(({ node, plot }) => {
    const { left, top, width, height } = plot.bbox;
    const { data: pixels } = plot.ctx.getImageData(left, top, width, height);
    let drawn = 0;
    for (let i = 0; i < pixels.length; i += 4) {
      const [r, g, b, alpha] = pixels.slice(i, i + 4);
      if (alpha > 0 && (Math.max(r, g, b) - Math.min(r, g, b) > 40 || Math.max(r, g, b) < 110)) {
        ++drawn;
      }
    }
    return { caption: node.querySelector("figcaption").textContent, drawn };
  });
});
