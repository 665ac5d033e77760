// The events of a stream, block by block as they arrive.

export function readBlocks(response, take) {
  let rest = "";
  response.setEncoding("utf8").on("data", (text) => {
    const blocks = (rest + text).split("\n\n");
    rest = blocks.pop();
    for (const block of blocks) take(block);
  });
  response.on("error", () => {});
}

// What a block says of "event", "id" or "data".
export const fieldOf = (block, name) => block.match(new RegExp(`^${name}: (.*)$`, "m"))?.[1];
