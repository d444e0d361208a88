# SPDX-License-Identifier: MIT
"""Asks a service by HTTP, and makes of its answers what raises and what warns."""

from __future__ import annotations

import http.client
import json
import threading
from typing import Any
from urllib.parse import quote

from . import errors
from .errors import Code


class Link:
    """Asks the service. Any thread; reads go one after the other over one connection."""

    def __init__(self, host: str, port: int, token: str | None, timeout: float) -> None:
        self._host, self._port, self._timeout = host, port, timeout
        self._headers = {"Authorization": f"Bearer {token}"} if token else {}
        self._lock = threading.Lock()
        self._kept: http.client.HTTPConnection | None = None
        self.batch = threading.local()
        self.is_open = True

    def close(self) -> None:
        with self._lock:
            self.is_open = False
            if self._kept is not None:
                self._kept.close()

    def _connect(self) -> http.client.HTTPConnection:
        if not self.is_open:
            raise errors.refusal(Code.DETACHED, None, None, [])
        return http.client.HTTPConnection(self._host, self._port, timeout=self._timeout)

    def read(self, target: str) -> tuple[int, bytes]:
        """Status and body of a GET."""
        with self._lock:
            for is_last in (False, True):
                connection = self._kept if self._kept is not None and self.is_open else self._connect()
                self._kept = connection
                try:
                    connection.request("GET", target, headers=self._headers)
                    answer = connection.getresponse()
                    return answer.status, answer.read()
                except (OSError, http.client.HTTPException) as error:
                    # A connection that was left alone for long is closed by the other side.
                    connection.close()
                    self._kept = None
                    if is_last:
                        raise _lost(error) from error
        raise AssertionError

    def get(self, target: str, **parameters: object) -> Any:
        """What a GET answers; refused where there is no such node."""
        query = "&".join(f"{name}={quote(str(value), safe='')}" for name, value in parameters.items())
        status, body = self.read(f"{target}?{query}" if query else target)
        answer = _decoded(body)
        if status != 200:
            raise errors.refusal(code_of(answer, status), None, parameters.get("path"),
                                 details_of(answer))
        return answer

    def post(self, target: str, body: object) -> Any:
        """What a POST answers, refusals too. Over a connection of its own: it may take its time,
        and is never sent twice."""
        connection = self._connect()
        try:
            connection.request("POST", target, json.dumps(body).encode(),
                               {**self._headers, "Content-Type": "application/json"})
            answer = connection.getresponse()
            status, text = answer.status, answer.read()
        except (OSError, http.client.HTTPException) as error:
            raise _lost(error) from error
        finally:
            connection.close()
        decoded = _decoded(text)
        if status in (401, 403, 404, 413, 429) and "writes" not in decoded:
            raise errors.refusal(code_of(decoded, status), None, None, details_of(decoded))
        return decoded

    def ask(self, target: str, body: object, node: Any, value: object = None) -> None:
        """A POST that a code answers."""
        check(self.post(target, body), node, value)


def _lost(error: Exception) -> ConnectionError:
    return error if isinstance(error, ConnectionError) else ConnectionError(
        f"the service does not answer: {error or type(error).__name__}")


def _decoded(body: bytes) -> Any:
    try:
        return json.loads(body)
    except ValueError as error:
        raise ConnectionError("this is no service of settings: its answer is no JSON") from error


def code_of(answer: Any, status: int) -> int:
    known = answer.get("code") if isinstance(answer, dict) else None
    if isinstance(known, int) and known > Code.WARNING:
        return known
    return Code.NO_WRITE_ACCESS if status in (401, 403) else Code.OPERATION_FAILED


def details_of(answer: Any) -> list[str]:
    detail = answer.get("detail") if isinstance(answer, dict) else None
    return [detail] if detail else []


def check(answer: Any, node: Any, value: object) -> None:
    """Raises a refusal; warns of code 1."""
    if answer["code"] == Code.WARNING:
        errors.warn(Code.WARNING, node, value, details_of(answer))
    elif answer["code"] != Code.OK:
        raise errors.refusal(answer["code"], node, value, details_of(answer))
