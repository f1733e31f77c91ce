/** Colours of the page as its style sheet has them, for what is drawn by other means. */

import { Color } from "three";

export function styleColour(name: string): string {
    return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}
export function threeColour(name: string): Color {
    return new Color(styleColour(name));
}
