/** Everything by keys, and the sheet that tells them. */

import { byId, make } from "./dom";

export interface KeyRow {
    /** As `KeyboardEvent.key` has it; several for one deed. */
    keys: string[];
    /** As people read it. */
    label: string;
    what: string;
    group: string;
    act: (event: KeyboardEvent) => void;
}

/** Whether the key is for the element that has the focus. */
function isTaken(event: KeyboardEvent): boolean {
    const target = event.target as HTMLElement;
    if (event.ctrlKey || event.metaKey || event.altKey) return true;
    if (target.tagName === "INPUT") {
        const isRange = (target as HTMLInputElement).type === "range";
        return isRange ? ["ArrowUp", "ArrowDown", "PageUp", "PageDown"].includes(event.key) : event.key !== "Escape";
    }
    if (target.tagName === "SELECT") return event.key !== "Escape" && event.key !== "?";
    if (target.tagName === "BUTTON") return event.key === " " || event.key === "Enter";
    return target.closest("dialog") !== null && event.key !== "?";
}

export class Keys {
    private readonly sheet = byId<HTMLDialogElement>("sheet");

    constructor(rows: KeyRow[]) {
        const groups = new Map<string, KeyRow[]>();
        for (const row of rows) groups.set(row.group, [...(groups.get(row.group) ?? []), row]);
        for (const [name, members] of groups) {
            const list = make("dl");
            for (const { label, what } of members) list.append(make("dt", {}, make("kbd", {}, label)), make("dd", {}, what));
            byId("sheet-keys").append(make("section", {}, make("h3", {}, name), list));
        }
        byId("help").addEventListener("click", () => this.toggle());
        for (const button of this.sheet.querySelectorAll(".shut")) button.addEventListener("click", () => this.sheet.close());
        document.addEventListener("keydown", (event) => {
            if (isTaken(event)) return;
            const row = rows.find(({ keys }) => keys.includes(event.key) || keys.includes(event.key.toLowerCase()));
            if (!row) return;
            event.preventDefault();
            row.act(event);
        });
    }
    toggle(): void {
        if (this.sheet.open) this.sheet.close();
        else this.sheet.showModal();
    }
}
