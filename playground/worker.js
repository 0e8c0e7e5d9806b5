// SPDX-License-Identifier: MIT

// The worker: it has the module with the library, and does one thing after the other, so that the page never waits with what
// it draws. It gets messages {id, kind, data} and answers each with {id, answer} or {id, failure}.

let module = null;
let text = "";

function call(name, ...given) {
    return JSON.parse(module.UTF8ToString(module["_playground_" + name](...given)));
}

/// Calls a function of the module with a text first, as its place and its size in bytes.
function callWith(name, given, ...others) {
    const bytes = new TextEncoder().encode(given);
    const place = module._malloc(bytes.length + 1);
    if (place === 0)
        return {error: "This takes more memory than there is."};
    module.HEAPU8.set(bytes, place);
    try {
        return call(name, place, bytes.length, ...others);
    } finally {
        module._free(place);
    }
}

const acts = {
    read(data) {
        text = data.text;
        return callWith("read", text, data.sorted);
    },
    query(data) {
        const found = data.start === "" ? 0 : callWith("find", data.start).row;
        const row = found ?? 0;
        return {
            query: callWith("query", data.path, row, data.prefix),
            start: {row, name: call("rows", row, 1)[0].name, isGone: found === null},
        };
    },
    path: (data) => call("path", data.row),
    explain: (data) => callWith("explain", data.path, data.prefix),
    rows: (data) => call("rows", data.first, data.count),
    losses: () => callWith("losses", text),
    write: (data) => call("write", data.formatted),
};

async function load(wasm) {
    const bytes = Uint8Array.from(atob(wasm), (character) => character.charCodeAt(0));
    module = await createModule({wasmBinary: bytes});
}

self.onmessage = async ({data: {id, kind, data}}) => {
    try {
        self.postMessage({id, answer: kind === "load" ? await load(data) : acts[kind](data)});
    } catch (failure) {
        self.postMessage({id, failure: String(failure)});
    }
};
