/** The camera's way round the scene: orbit, pan and zoom, by mouse, touch and keys. */

import { PerspectiveCamera, Vector3 } from "three";

const mostPitch = Math.PI / 2 - 0.01;

export class Orbit {
    readonly target = new Vector3();
    distance = 5;
    /** Radians; 0 looks from +Z of the view. */
    yaw = 0;
    pitch = 0.15;
    private readonly pointers = new Map<number, { x: number; y: number }>();
    private moved = 0;

    constructor(readonly camera: PerspectiveCamera, private readonly element: HTMLElement,
        private readonly changed: () => void, private readonly clicked: (event: PointerEvent) => void) {
        element.addEventListener("pointerdown", (e) => this.down(e));
        element.addEventListener("pointermove", (e) => this.move(e));
        element.addEventListener("pointerup", (e) => this.up(e));
        element.addEventListener("pointercancel", (e) => this.pointers.delete(e.pointerId));
        element.addEventListener("contextmenu", (e) => e.preventDefault());
        element.addEventListener("wheel", (e) => {
            e.preventDefault();
            this.zoom(Math.exp(Math.max(-1, Math.min(1, e.deltaY * 0.0015))));
        }, { passive: false });
    }

    get isDragging(): boolean {
        return this.pointers.size > 0 && this.moved > 4;
    }

    turn(yaw: number, pitch: number): void {
        this.yaw += yaw;
        this.pitch = Math.max(-mostPitch, Math.min(mostPitch, this.pitch + pitch));
        this.changed();
    }
    look(yaw: number, pitch: number): void {
        this.yaw = yaw;
        this.pitch = Math.max(-mostPitch, Math.min(mostPitch, pitch));
        this.changed();
    }
    /** By parts of the view's height. */
    pan(right: number, up: number): void {
        const height = 2 * this.distance * Math.tan((this.camera.fov * Math.PI) / 360);
        const m = this.camera.matrix.elements;
        this.target.x += (m[0] * right + m[4] * up) * height;
        this.target.y += (m[1] * right + m[5] * up) * height;
        this.target.z += (m[2] * right + m[6] * up) * height;
        this.changed();
    }
    zoom(factor: number): void {
        this.distance = Math.max(1e-4, Math.min(1e7, this.distance * factor));
        this.changed();
    }
    /** Brings a ball into view. */
    frame(centre: Vector3, radius: number): void {
        const half = (this.camera.fov * Math.PI) / 360;
        const narrower = Math.min(half, Math.atan(Math.tan(half) * this.camera.aspect));
        this.target.copy(centre);
        this.distance = (Math.max(radius, 1e-4) * 1.12) / Math.sin(narrower);
        this.changed();
    }
    place(): void {
        const { camera, target, distance, yaw, pitch } = this;
        camera.position.set(
            target.x + distance * Math.cos(pitch) * Math.sin(yaw),
            target.y + distance * Math.sin(pitch),
            target.z + distance * Math.cos(pitch) * Math.cos(yaw),
        );
        camera.near = distance / 500;
        camera.far = distance * 200;
        camera.lookAt(target);
        camera.updateProjectionMatrix();
        camera.updateMatrixWorld(true);
    }

    private down(event: PointerEvent): void {
        this.element.setPointerCapture(event.pointerId);
        if (this.pointers.size === 0) this.moved = 0;
        this.pointers.set(event.pointerId, { x: event.clientX, y: event.clientY });
    }
    private move(event: PointerEvent): void {
        const last = this.pointers.get(event.pointerId);
        if (!last) return;
        const dx = event.clientX - last.x, dy = event.clientY - last.y;
        const before = this.spread();
        last.x = event.clientX;
        last.y = event.clientY;
        this.moved += Math.abs(dx) + Math.abs(dy);
        const height = this.element.clientHeight || 1;
        if (this.pointers.size > 1) {
            const after = this.spread();
            if (before > 0 && after > 0) this.zoom(before / after);
            this.pan(-dx / height / 2, dy / height / 2);
        } else if (event.buttons & 6 || event.shiftKey) {
            this.pan(-dx / height, dy / height);
        } else {
            this.turn((-dx / height) * 4, (dy / height) * 4);
        }
    }
    private up(event: PointerEvent): void {
        const wasAlone = this.pointers.size === 1;
        this.pointers.delete(event.pointerId);
        if (wasAlone && this.moved <= 4 && event.button === 0) this.clicked(event);
    }
    private spread(): number {
        const [a, b] = Array.from(this.pointers.values());
        return b ? Math.hypot(a.x - b.x, a.y - b.y) : 0;
    }
}
