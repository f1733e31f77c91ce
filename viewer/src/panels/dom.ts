/** Elements by their ids, and new ones. Texts of a scene go in as texts and never as markup. */

export function byId<T extends HTMLElement = HTMLElement>(id: string): T {
    return document.getElementById(id) as T;
}

type Attributes = Record<string, string | number | boolean>;

export function make<K extends keyof HTMLElementTagNameMap>(tag: K, attributes: Attributes = {},
    ...children: (Node | string)[]): HTMLElementTagNameMap[K] {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes)) {
        if (value === true) element.setAttribute(name, "");
        else if (value !== false) element.setAttribute(name, String(value));
    }
    element.append(...children);
    return element;
}

/** A number for people: few digits, never more than they mean. */
export function told(value: number, digits = 4): string {
    if (!Number.isFinite(value)) return Number.isNaN(value) ? "not a number" : value > 0 ? "∞" : "−∞";
    if (value === 0) return "0";
    const size = Math.abs(value);
    if (size >= 1e6 || size < 1e-5) return value.toExponential(2).replace("-", "−");
    const decimals = Math.max(0, Math.min(6, digits - 1 - Math.floor(Math.log10(size))));
    return Number(value.toFixed(decimals)).toString().replace("-", "−");
}

export function bytesTold(bytes: number): string {
    if (bytes < 1000) return `${bytes} bytes`;
    const steps = ["kB", "MB", "GB"];
    let at = -1, size = bytes;
    while (size >= 1000 && at < steps.length - 1) [at, size] = [at + 1, size / 1000];
    return `${size.toFixed(size < 10 ? 2 : 1)} ${steps[at]}`;
}

export function countTold(count: number): string {
    return count.toLocaleString("en-GB");
}

/** "1 key", "12 keys" */
export function counted(count: number, what: string): string {
    return `${countTold(count)} ${what}${count === 1 ? "" : "s"}`;
}
