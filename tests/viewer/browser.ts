/** Chromium without a window, drawing by software, for tests and makers of pictures. */

import { existsSync } from "node:fs";
import { mkdtempSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { BrowserContext, Page, chromium } from "playwright-core";

export interface Shown {
    page: Page;
    /** What the console said of errors, and errors that nothing caught. */
    troubles: string[];
}

export function chromiumPath(): string | null {
    return [process.env.CHROMIUM, "/usr/bin/chromium", "/usr/bin/google-chrome"].find((path) => path && existsSync(path)) ?? null;
}

export async function startBrowser(width: number, height: number, dark: boolean, scale = 1): Promise<BrowserContext> {
    const folder = mkdtempSync(join(tmpdir(), "vor2-browser-"));
    return chromium.launchPersistentContext(folder, {
        executablePath: chromiumPath()!,
        headless: true,
        viewport: { width, height },
        deviceScaleFactor: scale,
        colorScheme: dark ? "dark" : "light",
        args: ["--no-sandbox", "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update",
            "--disable-sync", "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--ignore-gpu-blocklist"],
    });
}

export async function show(browser: BrowserContext, file: string): Promise<Shown> {
    const page = await browser.newPage();
    const troubles: string[] = [];
    page.on("console", (message) => message.type() === "error" && troubles.push(message.text()));
    page.on("pageerror", (error) => troubles.push(String(error)));
    page.on("request", (request) => /^(file|data|blob):/.test(request.url()) || troubles.push(`asked for ${request.url()}`));
    await page.goto(pathToFileURL(file).href);
    await page.waitForFunction(() => document.documentElement.dataset.ready === "true" || !document.getElementById("trouble")!.hidden);
    return { page, troubles };
}
