// SPDX-License-Identifier: MIT
// Pictures from the service, as long as somebody looks at them.

import { decode } from './picture.js';

const kPause = 1000; // milliseconds before trying again

export class WaveSource {
    /**
     * @param {import('../connection.js').Connection} connection
     * @param {object} hear
     * @param {(standing: {traces: boolean, spectrum: boolean}) => void} hear.standing
     * @param {(picture: object) => void} hear.picture as picture.js has it
     * @param {(masks: object[]) => void} hear.masks
     */
    constructor(connection, hear) {
        this.connection = connection;
        this.hear = hear;
        this.wanted = {};
        this.sent = '';
        this.socket = null;
        this.timer = null;
        this.onVisible = () => this.#send();
        document.addEventListener('visibilitychange', this.onVisible);
        this.#open();
    }

    /** @param {{traces?: object, spectrum?: object}} wish nothing of what is left out comes */
    want(wish) {
        this.wanted = wish;
        this.#send();
    }

    close() {
        document.removeEventListener('visibilitychange', this.onVisible);
        clearTimeout(this.timer);
        const socket = this.socket;
        this.socket = null;
        socket?.close();
    }

    #open() {
        const socket = this.connection.openSocket('waves');
        socket.binaryType = 'arraybuffer';
        this.socket = socket;
        socket.onopen = () => {
            this.sent = '';
            this.#send();
        };
        socket.onmessage = ({ data }) => this.socket === socket && this.#take(data);
        socket.onclose = () => {
            if (this.socket === socket) {
                this.timer = setTimeout(() => this.#open(), kPause);
            }
        };
    }

    /** A page that nobody sees asks for nothing. */
    #send() {
        const wish = JSON.stringify(document.hidden ? {} : this.wanted);
        if (this.socket?.readyState === WebSocket.OPEN && wish !== this.sent) {
            this.sent = wish;
            this.socket.send(wish);
        }
    }

    #take(data) {
        if (typeof data !== 'string') {
            this.hear.picture(decode(data));
            return;
        }
        const message = JSON.parse(data);
        if (message.masks) {
            this.hear.masks(message.masks);
        } else if (message.traces !== undefined) {
            this.hear.standing(message);
        }
    }
}
