/** The time that the page shows, playing or not. */

import { Signal } from "./signal";

export const speeds = [0.1, 0.25, 0.5, 1, 2, 4] as const;

export class Clock {
    readonly time: Signal<number>;
    readonly playing = new Signal(false);
    readonly loop = new Signal(true);
    readonly speed = new Signal<number>(1);

    constructor(readonly start: number, readonly end: number, readonly rate: number) {
        this.time = new Signal(start);
    }

    get span(): number {
        return this.end - this.start;
    }
    get frame(): number {
        return (this.time.value - this.start) * this.rate;
    }

    set(time: number): void {
        this.time.value = Math.max(this.start, Math.min(this.end, time));
    }
    play(): void {
        if (this.span <= 0) return;
        if (this.time.value >= this.end) this.set(this.start);
        this.playing.value = true;
    }
    pause(): void {
        this.playing.value = false;
        this.time.tellAgain();
    }
    toggle(): void {
        if (this.playing.value) this.pause();
        else this.play();
    }
    /** Stops, and goes to the frame that many away; from between two frames, to the next one that way. */
    step(frames: number): void {
        this.pause();
        const now = this.frame, nearest = Math.round(now);
        const base = Math.abs(now - nearest) < 1e-3 ? nearest : frames > 0 ? Math.floor(now) : Math.ceil(now);
        this.set(this.start + (base + frames) / this.rate);
    }
    changeSpeed(by: number): void {
        const at = speeds.findIndex((s) => s >= this.speed.value);
        this.speed.value = speeds[Math.max(0, Math.min(speeds.length - 1, at + by))];
    }
    /** Real seconds have passed. The end goes over into the start, or stops the clock. */
    tick(seconds: number): void {
        if (!this.playing.value) return;
        const next = this.time.value + seconds * this.speed.value;
        if (next < this.end) return this.set(next);
        if (this.loop.value) return this.set(this.start + ((next - this.start) % this.span));
        this.set(this.end);
        this.pause();
    }
}
