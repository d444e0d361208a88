// SPDX-License-Identifier: MIT
// All nodes by path, as the service told them last. What changes is applied together, once per
// picture of the screen, however many messages came.

import { isBelow, parentOf } from './paths.js';

const kMembers = ['properties', 'actions', 'groups'];

/** The nodes that stand right below one as the service tells it with its members. */
function* membersOf(json) {
    for (const kind of kMembers) {
        yield* Object.values(json[kind] ?? {});
    }
    yield* json.items ?? [];
}

function headOf(json) {
    const { properties, actions, groups, items, ...head } = json;
    return head;
}

/** A change tells what moves; whether that is the default is told with full detail alone. */
function merge(old, now) {
    const node = { ...old, ...now };
    if (old.isDefault !== undefined && !('isDefault' in now)) {
        node.isDefault = node.value === node.default;
    }
    return node;
}

/** Whether a user has set it to something else than its default. */
export function differs(node) {
    return node.isDefault === false && !node.result;
}

const kShown = ['shown', 'valid', 'availability', 'minimum', 'maximum', 'count', 'active'];

/** Whether a reader would see a difference. */
export function isMoved(before, now) {
    return kShown.some((key) => before[key] !== now[key]);
}

export class Store {
    /**
     * @param {(f: () => void) => void} nextFrame carries out before the next picture
     * @param {object} hear
     * @param {(moves: {path: string, before: ?object, now: ?object}[]) => void} hear.moved
     * @param {(path: string) => void} hear.unknown a node whose members are not known: wants to be
     *        read again and given to `graft`
     */
    constructor(nextFrame, hear = {}) {
        this.nextFrame = nextFrame;
        this.hear = hear;
        this.nodes = new Map();
        this.members = new Map(); // paths, in the order of the tree
        this.counts = new Map(); // how many settings below differ from their defaults
        this.version = 0; // grows with each change
        this.structure = 0; // grows when nodes come or go
        this.pending = new Map();
        this.isWaiting = false;
        this.listeners = new Map();
        this.watchers = new Set();
    }

    /** @returns {?object} without members; another object whenever it has changed */
    node(path) {
        return this.nodes.get(path) ?? null;
    }

    /** @returns {string[]} paths of members */
    children(path) {
        return this.members.get(path) ?? [];
    }

    /** How many settings here and below differ from their defaults. */
    differing(path) {
        return this.counts.get(path) ?? 0;
    }

    /** Calls after a change of one node, or of what counts below it.
        @returns {() => void} ends it */
    subscribe(path, f) {
        const those = this.listeners.get(path) ?? new Set();
        this.listeners.set(path, those.add(f));
        return () => {
            those.delete(f);
            if (those.size === 0 && this.listeners.get(path) === those) {
                this.listeners.delete(path);
            }
        };
    }

    /** Calls after each change, once for all that changed together.
        @param {(paths: Set<string>) => void} f */
    watch(f) {
        this.watchers.add(f);
        return () => this.watchers.delete(f);
    }

    /** Calls those who follow these nodes, though the nodes are as they were. */
    touch(paths) {
        this.#tell([], new Set(paths));
    }

    /** Takes a node with all that is below it, in full detail, in place of what was known; nothing
        where the node has gone since it was asked for. */
    graft(json, isAgain = true) {
        this.flush();
        if (json.path !== '' && !this.nodes.has(json.path)) {
            return;
        }
        const moves = [];
        const changed = new Set();
        const old = [...this.nodes.keys()].filter((path) => isBelow(path, json.path));
        const fresh = new Set();
        this.#plant(json, fresh, moves, changed);
        for (const path of old.filter((path) => !fresh.has(path))) {
            this.#remove(path, moves, changed);
        }
        this.structure += 1;
        this.#recount(changed);
        this.#tell(isAgain ? moves : [], changed);
    }

    /** @param {{path: string, now?: object, removed?: boolean}[]} changes */
    apply(changes) {
        for (const change of changes) {
            this.pending.set(change.path, change);
        }
        if (this.pending.size > 0 && !this.isWaiting) {
            this.isWaiting = true;
            this.nextFrame(() => this.flush());
        }
    }

    /** Applies what waits. */
    flush() {
        this.isWaiting = false;
        if (this.pending.size === 0) {
            return;
        }
        const changes = [...this.pending.values()];
        this.pending.clear();
        const moves = [];
        const changed = new Set();
        const structure = this.structure;
        const unknown = new Set();
        for (const { path, now, removed } of changes) {
            if (removed) {
                this.#removeAll(path, moves, changed);
            } else {
                this.#take(path, now, moves, changed, unknown);
            }
        }
        if (structure !== this.structure) {
            this.#recount(changed);
        }
        this.#tell(moves, changed);
        unknown.forEach((path) => this.hear.unknown?.(path));
    }

    #plant(json, fresh, moves, changed) {
        const { path } = json;
        fresh.add(path);
        const before = this.nodes.get(path);
        const now = headOf(json);
        this.nodes.set(path, now);
        changed.add(path);
        if (!before || isMoved(before, now)) {
            moves.push({ path, before: before ?? null, now });
        }
        const members = [];
        for (const member of membersOf(json)) {
            members.push(member.path);
            this.#plant(member, fresh, moves, changed);
        }
        this.members.set(path, members);
    }

    #take(path, now, moves, changed, unknown) {
        const before = this.nodes.get(path);
        if (!before) {
            this.#meet(path, unknown);
            return;
        }
        const node = merge(before, now);
        this.nodes.set(path, node);
        changed.add(path);
        this.#count(path, Number(differs(node)) - Number(differs(before)), changed);
        if (isMoved(before, node)) {
            moves.push({ path, before, now: node });
        }
    }

    /** Of a new node only the state is told, and not where it stands: the nearest known one is to
        be read again. */
    #meet(path, unknown) {
        let known = parentOf(path);
        while (known !== null && !this.nodes.has(known)) {
            known = parentOf(known);
        }
        if (known !== null) {
            unknown.add(known);
        }
    }

    #removeAll(path, moves, changed) {
        if (!this.nodes.has(path)) {
            return;
        }
        for (const member of [...this.children(path)]) {
            this.#removeAll(member, moves, changed);
        }
        this.#remove(path, moves, changed);
        this.structure += 1;
    }

    #remove(path, moves, changed) {
        moves.push({ path, before: this.nodes.get(path), now: null });
        this.nodes.delete(path);
        this.members.delete(path);
        changed.add(path);
        const parent = parentOf(path);
        if (this.members.has(parent)) {
            this.members.set(parent, this.children(parent).filter((member) => member !== path));
            changed.add(parent);
        }
    }

    #count(path, difference, changed) {
        for (let at = path; difference !== 0 && at !== null; at = parentOf(at)) {
            this.counts.set(at, this.differing(at) + difference);
            changed.add(at);
        }
    }

    #recount(changed) {
        const before = this.counts;
        this.counts = new Map();
        for (const [path, node] of this.nodes) {
            for (let at = path; differs(node) && at !== null; at = parentOf(at)) {
                this.counts.set(at, this.differing(at) + 1);
            }
        }
        for (const path of this.nodes.keys()) {
            if ((before.get(path) ?? 0) !== this.differing(path)) {
                changed.add(path);
            }
        }
    }

    #tell(moves, changed) {
        this.version += 1;
        if (moves.length > 0) {
            this.hear.moved?.(moves);
        }
        for (const path of changed) {
            [...(this.listeners.get(path) ?? [])].forEach((f) => f());
        }
        [...this.watchers].forEach((f) => f(changed));
    }
}
