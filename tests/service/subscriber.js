// SPDX-License-Identifier: MIT
// A subscriber: node subscriber.js PORT MESSAGE MILLISECONDS prints each message on a line of its own.
const WebSocket = require("ws");
const [port, message, time] = process.argv.slice(2);
const socket = new WebSocket(`ws://127.0.0.1:${port}/changes`);
socket.on("open", () => socket.send(message));
socket.on("message", (data) => console.log(data.toString()));
socket.on("error", (error) => console.log(`error: ${error.message}`));
setTimeout(() => socket.close(), Number(time));
