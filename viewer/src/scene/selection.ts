/** The nodes that are selected, the last one picked in front. */

import { Signal } from "./signal";

export class Selection {
    /** In the order in which they were picked. */
    readonly nodes = new Signal<readonly number[]>([]);
    readonly hovered = new Signal(-1);

    get last(): number {
        return this.nodes.value[this.nodes.value.length - 1] ?? -1;
    }
    has(node: number): boolean {
        return this.nodes.value.includes(node);
    }
    pick(node: number, adding = false): void {
        if (node < 0) {
            if (!adding) this.nodes.value = [];
            return;
        }
        if (!adding) this.nodes.value = [node];
        else if (this.has(node)) this.nodes.value = this.nodes.value.filter((n) => n !== node);
        else this.nodes.value = [...this.nodes.value, node];
    }
}
