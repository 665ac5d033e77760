// The order of the messages of a hub, which come twice, or not at all, when nodes fail. Each view has
// runs of numbers; docs/hubs.md says what they mean.

const longest = 200; // messages that wait for a state

// `picture` and `shapes` are called in order, with data, number, and whether it follows straight on what came
// before. `need` is called when a fresh state is missing.
export function hubOrder({ picture, shapes, need }) {
  let run;
  let number;
  const past = new Set();
  // What came since something is missing, and the least number that a state of its run must have.
  let waiting = null;

  function wait(message, least) {
    const isFirst = !waiting;
    waiting ??= { run: message.run, least, messages: [] };
    waiting.messages.push(message);
    if (waiting.messages.length > longest) {
      const newest = waiting.messages.pop();
      waiting = { run: newest.run, least: newest.sequence, messages: [] };
    }
    if (isFirst) need();
  }

  function take(message) {
    const { run: its, sequence, event, data } = message;
    if (past.has(its)) return;
    if (waiting) {
      if (event !== "beat") wait(message);
      return;
    }
    const isTold = event === "beat" || event === "fetch"; // by number alone
    if (its !== run) {
      wait(message, isTold ? sequence : sequence - 1);
    } else if (sequence <= number) {
      return;
    } else if (isTold) {
      wait(message, sequence);
    } else if (event === "picture" || sequence === number + 1) {
      const isNext = sequence === number + 1;
      number = sequence;
      (event === "picture" ? picture : shapes)(data, number, isNext);
    } else {
      wait(message, sequence - 1);
    }
  }

  return {
    take,
    // Takes up a state, where it is as new as what came. A cache may hold one of a run that is over: not
    // before `isNewest` is what was heard of taken for older.
    begin(state, isNewest = false) {
      const heard = waiting;
      if (heard && (state.run === heard.run ? state.sequence < heard.least : !isNewest)) return;
      if (heard && state.run !== heard.run) past.add(heard.run);
      waiting = null;
      if (state.run !== run) {
        past.add(run);
        past.delete(state.run);
        run = state.run;
        number = undefined;
      }
      if (!(state.sequence <= number)) {
        const isNext = state.sequence === number + 1;
        number = state.sequence;
        picture(state.picture, number, isNext);
      }
      for (const message of heard?.messages ?? []) take(message);
    },
    // Whether a fresh state is missing.
    get isWaiting() {
      return waiting !== null;
    },
    get run() {
      return run;
    },
  };
}
