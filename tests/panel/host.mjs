// SPDX-License-Identifier: MIT
// A running zelhost, at ports that the system chose, with a folder of its own.

import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { existsSync } from 'node:fs';
import { mkdtemp, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';

export const ROOT = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '../..');
const ZELHOST = process.env.ZELHOST ?? path.join(ROOT, 'build/release/service/zelhost');
const START_SECONDS = 20;

export class Host {
    /** @param {string[]} options of zelhost, besides its ports and folders */
    static async start(...options) {
        const host = new Host();
        host.options = options;
        host.folder = await mkdtemp(path.join(tmpdir(), 'panel-'));
        await host.#run('0', '0');
        return host;
    }

    /** The program anew, at the same ports: what pages that were open see as a break. */
    async restart() {
        await this.#stop();
        await this.#run(this.remotePort, new URL(this.url).port);
    }

    async end() {
        await this.#stop();
        await rm(this.folder, { recursive: true, force: true });
    }

    async stop() {
        await this.#stop();
    }

    /** A request as another client sends it. */
    async ask(resource, body) {
        const headers = this.token === undefined ? {} : { Authorization: `Bearer ${this.token}` };
        const answer = await fetch(this.url + resource, body === undefined ? { headers }
            : { method: 'POST', body: JSON.stringify(body), headers });
        return answer.json();
    }

    /** Writes one setting as another client, which nobody refuses. */
    async set(place, value) {
        const answer = await this.ask('/write', { writes: [{ path: place, value }] });
        if (!answer.kept) {
            throw new Error(`${place} = ${value}: ${JSON.stringify(answer)}`);
        }
    }

    async node(place) {
        return this.ask(`/tree?path=${encodeURIComponent(place)}&detail=full`);
    }

    async #run(port, httpPort) {
        const panel = process.env.PANEL_FOLDER ? ['--panel', process.env.PANEL_FOLDER] : [];
        const folder = existsSync(this.folder) ? ['--settings', this.folder] : [];
        this.process = spawn(ZELHOST, ['--port', port, '--http-port', httpPort, ...folder, ...panel,
            ...this.options], { stdio: ['ignore', 'pipe', 'inherit'] });
        const overdue = setTimeout(() => this.process.kill(), START_SECONDS * 1000);
        for await (const line of createInterface({ input: this.process.stdout })) {
            const [, address] = line.match(/(http:\S+)/) ?? [];
            this.remotePort = line.match(/^zelhost: 127\.0\.0\.1:(\d+)$/)?.[1] ?? this.remotePort;
            if (address !== undefined) {
                this.url = address.replace(/\/$/, '');
                break;
            }
        }
        clearTimeout(overdue);
        if (this.process.exitCode !== null || this.url === undefined) {
            throw new Error(`${ZELHOST} ${this.options.join(' ')} does not serve`);
        }
    }

    async #stop() {
        if (this.process.exitCode === null && this.process.signalCode === null) {
            const ended = once(this.process, 'exit');
            this.process.kill('SIGTERM');
            await ended;
        }
    }
}
