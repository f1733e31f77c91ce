/** Play, pause, scrub and step; time in seconds and frames; speed and loop. */

import { Clock, speeds } from "../scene/clock";
import type { Scene } from "../scene/scene";
import { byId, make } from "./dom";

export class Transport {
    private readonly slider = byId<HTMLInputElement>("scrub");

    constructor(scene: Scene, clock: Clock) {
        const play = byId("play"), speed = byId<HTMLSelectElement>("speed"), loop = byId("loop");
        const { slider } = this;
        let told = -Infinity;
        slider.min = "0";
        slider.max = String(Math.max(1, (clock.end - clock.start) * clock.rate));
        slider.step = "any";
        slider.disabled = clock.span <= 0;
        for (const s of speeds) speed.append(make("option", { value: s }, `${s}×`));
        slider.addEventListener("input", () => {
            // Pausing tells the time, which moves the slider.
            const frame = Math.round(Number(slider.value));
            clock.pause();
            clock.set(clock.start + frame / clock.rate);
        });
        play.addEventListener("click", () => clock.toggle());
        byId("first").addEventListener("click", () => clock.set(clock.start));
        byId("last").addEventListener("click", () => clock.set(clock.end));
        byId("back").addEventListener("click", () => clock.step(-1));
        byId("forth").addEventListener("click", () => clock.step(1));
        loop.addEventListener("click", () => (clock.loop.value = !clock.loop.value));
        speed.addEventListener("change", () => (clock.speed.value = Number(speed.value)));
        clock.speed.watch((value) => (speed.value = String(value)));
        clock.loop.watch((on) => loop.setAttribute("aria-pressed", String(on)));
        clock.playing.watch((on) => {
            if (!on) told = -Infinity;
            play.setAttribute("aria-label", on ? "Pause" : "Play");
            play.classList.toggle("playing", on);
        });
        const last = scene.lastFrame;
        clock.time.watch((time) => {
            // Nobody reads faster, and each change of the page beside the picture costs it some of its pictures.
            const now = performance.now();
            if (clock.playing.value && now - told < 90) return;
            told = now;
            slider.value = String(clock.frame);
            const frame = clock.frame, nearest = Math.round(frame);
            const number = Math.abs(frame - nearest) < 0.02 || clock.playing.value ? String(nearest) : frame.toFixed(2);
            byId("seconds").textContent = `${time.toFixed(3)} s`;
            byId("frame").textContent = `frame ${number} of ${last}`;
            slider.setAttribute("aria-valuetext", `${time.toFixed(2)} seconds, frame ${number} of ${last}`);
            slider.style.setProperty("--part", `${clock.span > 0 ? ((time - clock.start) / clock.span) * 100 : 0}%`);
        });
    }
}
