// What a program takes from its machine, and whether that stays level.

import { readFileSync, readdirSync } from "node:fs";

export function lookAt(pid) {
  const status = readFileSync(`/proc/${pid}/status`, "utf8");
  const value = (name) => Number(status.match(new RegExp(`^${name}:\\s+(\\d+)`, "m"))[1]);
  return {
    memory: value("VmRSS") / 1024,
    descriptors: readdirSync(`/proc/${pid}/fd`).length,
    threads: value("Threads"),
  };
}

const median = (values) => [...values].sort((a, b) => a - b)[values.length >> 1];

// Compares the typical figure of the second quarter, when everything has happened once,
// with that of the last; what is taken for a moment is the maximum.
export class Figure {
  constructor(name, unit, { most = Infinity, growth = Infinity }) {
    Object.assign(this, { name, unit, most, growth, values: [] });
  }

  take(value) {
    this.values.push(value);
  }

  // {line, isLevel}
  summary() {
    const quarter = Math.ceil(this.values.length / 4);
    const first = median(this.values.slice(quarter, 2 * quarter));
    const last = median(this.values.slice(-quarter));
    const highest = Math.max(...this.values);
    const isLevel = last - first <= this.growth && highest <= this.most;
    const round = (value) => value.toFixed(1).replace(/\.0$/, "");
    const bounds = `may grow by ${this.growth}${this.most < Infinity ? `, at most ${this.most}` : ""}`;
    return {
      isLevel,
      line:
        `${this.name.padEnd(16)} start ${round(this.values[0])}, second quarter ${round(first)}, last quarter ` +
        `${round(last)}, highest ${round(highest)} ${this.unit} (${bounds}): ${isLevel ? "level" : "NOT LEVEL"}`,
    };
  }
}
