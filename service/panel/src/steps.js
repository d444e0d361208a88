// SPDX-License-Identifier: MIT
// What happened while this window was open: our own steps and those of others, each with what it
// moved.

const kMostSteps = 100;
const kMostMoves = 500; // of one step
const kStill = 5000; // milliseconds
const kAfter = 150; // milliseconds: the service looks for changes every 50

/**
 * @typedef {object} Move
 * @property {string} path
 * @property {?object} before  null for a node that has come
 * @property {?object} now  null for one that has gone
 *
 * @typedef {object} Step
 * @property {number} id
 * @property {string} kind  "write", "run", "items", "undo", "redo", or "others"
 * @property {string} path  what was written or run, or empty
 * @property {number} at  time of day
 * @property {Map<string, Move>} moves
 * @property {?object} answer  of the service; null while it is not there
 */

export class Steps {
    /**
     * @param {() => number} now
     * @param {(before: ?object, now: ?object) => boolean} isMoved  of a node that is known
     */
    constructor(now, isMoved) {
        this.now = now;
        this.isMoved = isMoved;
        this.list = []; // the latest first
        this.own = null; // our last step
        this.others = new Map(); // what others have moved since
        this.restless = new Map(); // when a result moved last without us
        this.count = 0;
    }

    /** Our own step: what moves from now on is ascribed to it, until shortly after its answer.
        @returns {{step: Step, left: string[]}} `left` are paths that no longer count as moved */
    begin(kind, path) {
        const left = [...this.moved().keys()];
        const { own: last, others } = this;
        this.own = Object.assign(this.#add(kind, path), { isOpen: true, before: { last, others } });
        this.others = new Map();
        return { step: this.own, left };
    }

    /** @param {?object} answer of the service */
    end(step, answer) {
        step.isOpen = false;
        step.ended = this.now();
        step.answer = answer;
        if (answer === null || answer.code > 1) {
            this.list = this.list.filter((other) => other !== step);
            if (this.own === step) { // what was refused is no step: what moves is not its doing
                this.own = step.before.last;
                this.others = step.before.others;
            }
        }
        step.before = null; // steps do not hold one another
    }

    /** Our own step to which what moves now is ascribed, or null. */
    current() {
        const { own } = this;
        return own !== null && (own.isOpen || this.now() - own.ended <= kAfter) ? own : null;
    }

    /** @param {Move[]} moves that were told together
        @param {?Step} own our step that moved them; null where others did */
    take(moves, own = this.current()) {
        const isOurs = own !== null;
        const counted = moves.filter((move) => this.#isCounted(move, own));
        if (counted.length === 0) {
            return;
        }
        const step = own ?? this.#ofOthers();
        for (const move of counted) {
            this.#note(step.moves, move);
            if (!isOurs) {
                this.#note(this.others, move);
            }
        }
    }

    /** Results move all the time, whoever writes: one counts as moved by our step if it stood
        still before. */
    #isCounted({ path, before, now }, own) {
        if (!(now ?? before).result) {
            return true;
        }
        const last = this.restless.get(path);
        if (own === null) {
            this.restless.set(path, this.now());
        }
        return own !== null && !(own.began - last < kStill);
    }

    /** What has moved since our last step began, by path: by it or by others. */
    moved() {
        return new Map([...this.others, ...(this.own?.moves ?? [])]);
    }

    /** @returns {?Move} */
    moveOf(path) {
        return this.own?.moves.get(path) ?? this.others.get(path) ?? null;
    }

    #ofOthers() {
        const last = this.list[0];
        return last?.kind === 'others' && this.now() - last.began <= 1000 ? last
            : this.#add('others', '');
    }

    #add(kind, path) {
        this.count += 1;
        const step = { id: this.count, kind, path, at: Date.now(), began: this.now(),
            moves: new Map(), answer: null, isOpen: false };
        this.list = [step, ...this.list].slice(0, kMostSteps);
        return step;
    }

    /** From where it was at first to where it is now; nothing where it has gone back. */
    #note(moves, { path, before, now }) {
        const first = moves.get(path);
        const from = first ? first.before : before;
        if (from && now && !this.isMoved(from, now) || !from && !now) {
            moves.delete(path);
        } else if (first || moves.size < kMostMoves) {
            moves.set(path, { path, before: from, now });
        }
    }
}
