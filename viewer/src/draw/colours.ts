/** Colours of the page as its style sheet has them, for what is drawn by other means. */

import { Color } from "three";

// Asking has the browser look whether anything of the page's style changed, which pictures a second have no time for.
const known = new Map<string, string>();

export function styleColour(name: string): string {
    let colour = known.get(name);
    if (colour === undefined) {
        colour = getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
        known.set(name, colour);
    }
    return colour;
}
/** The style sheet has others from now on. */
export function forgetColours(): void {
    known.clear();
}
export function threeColour(name: string): Color {
    return new Color(styleColour(name));
}
