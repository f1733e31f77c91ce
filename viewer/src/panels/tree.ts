/** The nodes as a tree, with a filter. Selecting works both ways, by pointer and by keys. */

import type { Scene } from "../scene/scene";
import type { Selection } from "../scene/selection";
import { byId, counted, make } from "./dom";

/** Longer lists are cut, with a word on it: a page with more rows than that answers no key in time. */
const mostRows = 20000;

export class Tree {
    private readonly list = byId("tree");
    private readonly filter = byId<HTMLInputElement>("filter");
    private readonly rows: HTMLElement[] = [];
    private readonly folded = new Set<number>();
    private current = -1;

    constructor(private readonly scene: Scene, private readonly selection: Selection) {
        const depth = new Int32Array(scene.nodeCount);
        const meshesAt = new Map<number, string[]>();
        for (const { node, kind } of scene.document.meshes) meshesAt.set(node, [...(meshesAt.get(node) ?? []), kind]);
        for (const { node, kind } of scene.document.objects) meshesAt.set(node, [...(meshesAt.get(node) ?? []), kind]);
        const order: number[] = [];
        const stack = [...scene.roots].reverse();
        while (stack.length > 0) {
            const node = stack.pop()!;
            order.push(node);
            depth[node] = scene.parents[node] < 0 ? 0 : depth[scene.parents[node]] + 1;
            stack.push(...scene.children[node].slice().reverse());
        }
        this.order = order.slice(0, mostRows);
        for (const node of this.order) {
            const row = this.rowOf(node, depth[node], meshesAt.get(node) ?? []);
            this.rows[node] = row;
            this.list.append(row);
        }
        if (order.length > mostRows) this.list.append(make("p", { class: "note" }, `and ${order.length - mostRows} more`));
        if (order.length === 0) this.list.append(make("p", { class: "note" }, "This scene has no nodes."));
        this.list.addEventListener("click", (e) => this.clicked(e));
        this.list.addEventListener("dblclick", () => this.framed());
        this.list.addEventListener("keydown", (e) => this.key(e));
        this.list.addEventListener("pointerover", (e) => (selection.hovered.value = this.nodeOf(e.target)));
        this.list.addEventListener("pointerleave", () => (selection.hovered.value = -1));
        this.filter.addEventListener("input", () => this.show());
        selection.nodes.watch((nodes) => this.mark(nodes));
        selection.hovered.watch((node) => this.hover(node));
        this.show();
    }
    /** Called for a double click. */
    framed: () => void = () => undefined;
    private readonly order: number[];
    private lastHovered = -1;

    focusFilter(): void {
        this.filter.focus();
        this.filter.select();
    }

    private rowOf(node: number, depth: number, kinds: string[]): HTMLElement {
        const hasChildren = this.scene.children[node].length > 0;
        const row = make("div", {
            role: "treeitem", "aria-level": depth + 1, "aria-selected": "false", tabindex: "-1", "data-node": node, class: "row",
            ...(hasChildren ? { "aria-expanded": "true" } : {}),
        });
        row.style.paddingLeft = `${0.35 + Math.min(depth, 24) * 0.8}rem`;
        row.append(make("span", { class: "fold", "aria-hidden": "true" }, hasChildren ? "▾" : ""));
        row.append(make("span", { class: "name" }, this.scene.nameOf(node) || "(no name)"));
        const badges = [...new Set(kinds)].map((kind) => make("span", { class: "badge" }, kind));
        row.append(...badges);
        if (!this.scene.isStill(node)) row.append(make("span", { class: "dot", title: "has keys" }));
        return row;
    }

    private nodeOf(target: EventTarget | null): number {
        const row = (target as HTMLElement | null)?.closest?.<HTMLElement>("[data-node]");
        return row ? Number(row.dataset.node) : -1;
    }
    private clicked(event: MouseEvent): void {
        const node = this.nodeOf(event.target);
        if (node < 0) return;
        if ((event.target as HTMLElement).classList.contains("fold") && this.scene.children[node].length > 0) return this.fold(node);
        this.selection.pick(node, event.ctrlKey || event.metaKey || event.shiftKey);
    }
    private fold(node: number, shut = !this.folded.has(node)): void {
        if (shut) this.folded.add(node);
        else this.folded.delete(node);
        this.rows[node].setAttribute("aria-expanded", String(!shut));
        this.rows[node].querySelector(".fold")!.textContent = shut ? "▸" : "▾";
        this.show();
    }

    /** What the filter lets through, with the nodes above it, and nothing below what is folded. */
    private show(): void {
        const words = this.filter.value.toLowerCase().split(/\s+/).filter(Boolean);
        const wanted = new Uint8Array(this.scene.nodeCount);
        let found = 0;
        for (const node of this.order) {
            const name = this.scene.nameOf(node).toLowerCase();
            if (!words.every((word) => name.includes(word))) continue;
            ++found;
            for (let n = node; n >= 0 && !wanted[n]; n = this.scene.parents[n]) wanted[n] = 1;
        }
        const hiddenBelow = new Uint8Array(this.scene.nodeCount);
        for (const node of this.order) {
            const parent = this.scene.parents[node];
            hiddenBelow[node] = parent >= 0 && (hiddenBelow[parent] || (words.length === 0 && this.folded.has(parent))) ? 1 : 0;
            this.rows[node].hidden = !wanted[node] || hiddenBelow[node] === 1;
        }
        byId("filter-count").textContent = words.length > 0 ? `${found} of ${this.scene.nodeCount}` : counted(this.scene.nodeCount, "node");
        this.setCurrent(this.current >= 0 && !this.rows[this.current]?.hidden ? this.current : this.firstShown());
    }
    private firstShown(): number {
        return this.order.find((node) => !this.rows[node].hidden) ?? -1;
    }
    private setCurrent(node: number): void {
        if (this.current >= 0) this.rows[this.current]?.setAttribute("tabindex", "-1");
        this.current = node;
        if (node >= 0) this.rows[node]?.setAttribute("tabindex", "0");
    }

    private mark(nodes: readonly number[]): void {
        for (const row of this.list.querySelectorAll('[aria-selected="true"]')) row.setAttribute("aria-selected", "false");
        for (const node of nodes) this.rows[node]?.setAttribute("aria-selected", "true");
        const last = nodes[nodes.length - 1];
        if (last === undefined || !this.rows[last]) return;
        for (let n = this.scene.parents[last]; n >= 0; n = this.scene.parents[n]) if (this.folded.has(n)) this.fold(n, false);
        this.setCurrent(last);
        this.reveal(this.rows[last]);
    }
    /** Scrolls the list alone, never the page. */
    private reveal(row: HTMLElement): void {
        const top = row.offsetTop - this.list.offsetTop, { clientHeight, scrollTop } = this.list;
        if (top < scrollTop || top + row.offsetHeight > scrollTop + clientHeight) this.list.scrollTop = top - clientHeight / 2;
    }
    private hover(node: number): void {
        this.rows[this.lastHovered]?.classList.remove("hovered");
        this.rows[node]?.classList.add("hovered");
        this.lastHovered = node;
    }

    private key(event: KeyboardEvent): void {
        if (event.ctrlKey || event.altKey || event.metaKey) return;
        const shown = this.order.filter((node) => !this.rows[node].hidden);
        const at = shown.indexOf(this.current);
        const go = (node: number | undefined) => {
            if (node === undefined) return;
            this.selection.pick(node, event.shiftKey);
            this.setCurrent(node);
            this.rows[node].focus({ preventScroll: true });
        };
        const { children, parents } = this.scene;
        const node = this.current;
        if (event.key === "ArrowDown") go(shown[at + 1]);
        else if (event.key === "ArrowUp") go(shown[at - 1]);
        else if (event.key === "Home") go(shown[0]);
        else if (event.key === "End") go(shown[shown.length - 1]);
        else if (event.key === "ArrowRight" && this.folded.has(node)) this.fold(node, false);
        else if (event.key === "ArrowRight") go(children[node]?.[0]);
        else if (event.key === "ArrowLeft" && children[node]?.length > 0 && !this.folded.has(node)) this.fold(node, true);
        else if (event.key === "ArrowLeft") go(parents[node] >= 0 ? parents[node] : undefined);
        else if (event.key === "Enter" || event.key === " ") go(node);
        else return;
        event.preventDefault();
        event.stopPropagation();
    }
}
