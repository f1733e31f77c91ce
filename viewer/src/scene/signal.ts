/** A value that others can watch. */
export class Signal<T> {
    private readonly watchers: ((value: T) => void)[] = [];
    constructor(private current: T) {}

    get value(): T {
        return this.current;
    }
    set value(value: T) {
        if (Object.is(value, this.current)) return;
        this.current = value;
        for (const watcher of this.watchers) watcher(value);
    }
    /** Tells the value once more to those who passed over some. */
    tellAgain(): void {
        for (const watcher of this.watchers) watcher(this.current);
    }
    /** Called with the present value at once, and with each new one. */
    watch(watcher: (value: T) => void): void {
        this.watchers.push(watcher);
        watcher(this.current);
    }
}
