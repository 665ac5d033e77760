// One open form and its server. The server owns the form; this keeps what the user did to it that the server has
// yet to answer, sends that in its order, one request at a time, and never lets an older answer undo it.

const typingPause = 250;
const valueOf = { TextBox: "Text", ComboBox: "Text", CheckBox: "Value", OptionButton: "Value", ListBox: "Selected" };

export class FormSession {
  #send;
  #changed;
  #refused;
  #queue = []; // events that were not sent yet
  #own = new Map(); // by control: {value, seq}: what the user put there; seq is Infinity until it is sent
  #touched = new Map(); // by control: its last value by the user
  #elsewhere = new Map(); // by control: its value at the server, which differs from what is being typed here
  #timer;
  #seq;
  #ack; // of the events, the last that the server has answered
  #sending = null;
  #isClosed = false;

  // `send({seq, events})` resolves to {ack, patch}; `changed(names)` hears which controls to draw anew, `refused(error)`
  // why the server would not take something.
  constructor(form, { send, changed, refused }) {
    this.#send = send;
    this.#changed = changed;
    this.#refused = refused;
    this.form = form;
    this.#seq = this.#ack = form.ack ?? 0;
  }

  // A property as it is to be shown.
  get(name, property) {
    const control = this.form.controls[name];
    if (property === valueOf[control.kind] && this.#own.has(name)) return this.#own.get(name).value;
    return control[property];
  }

  // What became of the control's value elsewhere while the user types another, or null.
  elsewhere(name) {
    return this.#elsewhere.get(name) ?? null;
  }

  // Gives up what was typed for what the value has become elsewhere.
  takeElsewhere(name) {
    const value = this.elsewhere(name);
    this.forgetElsewhere(name);
    if (value !== null) this.raise(name, "change", value);
  }

  forgetElsewhere(name) {
    if (this.#elsewhere.delete(name)) this.#changed([name]);
  }

  // `controls` came when the server had handled all up to `ack`, of which nothing is new: what differs there from
  // what is being typed is somebody else's.
  #noteElsewhere(controls, ack) {
    if (ack > this.#ack) return;
    for (const [name, { seq, value }] of this.#own) {
      const { kind, ...old } = this.form.controls[name];
      const fresh = controls[name]?.[valueOf[kind]];
      if (seq <= ack || typeof fresh !== "string" || fresh === old[valueOf[kind]]) continue;
      if (fresh === value) this.#elsewhere.delete(name);
      else this.#elsewhere.set(name, fresh);
    }
  }

  get isTouched() {
    return this.#touched.size > 0;
  }

  get isTyping() {
    return this.#own.size > 0;
  }

  // Something was typed: sent after a pause, or with what is done next.
  type(name, value) {
    this.#put(name, "change", value);
    clearTimeout(this.#timer);
    this.#timer = setTimeout(() => this.flush(), typingPause);
  }

  // Something was done: sent at once, behind what was typed.
  raise(name, event, value) {
    if (event === "change" && valueOf[this.form.controls[name].kind]) this.#put(name, event, value);
    else this.#queue.push(value === undefined ? { control: name, event } : { control: name, event, value });
    if (event === "change" && !this.#touched.has(name)) this.#touched.set(name, undefined); // what was drawn over a preview
    this.flush();
  }

  // A control was left: what was typed there is said now.
  leave(name) {
    if (!this.#touched.has(name)) return;
    this.raise(name, "lostfocus");
  }

  #put(name, event, value) {
    const last = this.#queue.at(-1);
    if (last?.control === name && last.event === event) last.value = value;
    else this.#queue.push({ control: name, event, value });
    this.#own.set(name, { value, seq: Infinity });
    this.#touched.set(name, value);
    const { kind, Group } = this.form.controls[name];
    if (kind === "OptionButton" && value) this.#release(name, Group);
    this.#changed([name]);
  }

  // Of the options of one group at most one is chosen.
  #release(chosen, group) {
    for (const [name, control] of Object.entries(this.form.controls)) {
      if (name === chosen || control.kind !== "OptionButton" || control.Group !== group) continue;
      control.Value = false;
      this.#own.delete(name);
      this.#touched.delete(name);
      this.#changed([name]);
    }
  }

  // Sends all that waits; resolves when it was answered.
  flush() {
    clearTimeout(this.#timer);
    if (this.#isClosed) return Promise.resolve();
    this.#sending ??= this.#sendAll().finally(() => (this.#sending = null));
    return this.#sending;
  }

  async #sendAll() {
    while (this.#queue.length > 0) {
      const events = this.#queue;
      this.#queue = [];
      const seq = ++this.#seq;
      for (const { control, event } of events) {
        if (event === "change" && this.#own.has(control)) this.#own.get(control).seq = seq;
      }
      try {
        const { ack, patch } = await this.#send({ seq, events });
        // What the stream has told already may be followed there by what is newer than this answer.
        this.take(seq > this.#ack ? (patch ?? {}) : {}, ack ?? seq);
      } catch (error) {
        // Until the server is back; one that has begun anew does not know the form, and makes it again.
        if (error.status === 0 || error.status === 404) {
          this.#queue = [...events, ...this.#queue];
          break;
        }
        this.#settle({}, seq);
        this.#refused(error);
      }
    }
  }

  // What the server has changed, once it had handled all up to the event `ack`.
  take(patch, ack) {
    this.#noteElsewhere(patch, ack);
    // What it took and did not change again is what the user put there.
    for (const [name, { seq, value }] of this.#own) {
      if (seq <= ack) this.form.controls[name][valueOf[this.form.controls[name].kind]] = value;
    }
    this.#settle(patch, ack);
  }

  #settle(patch, ack) {
    this.#ack = Math.max(this.#ack, ack);
    const names = new Set(Object.keys(patch));
    for (const [name, properties] of Object.entries(patch)) Object.assign(this.form.controls[name] ?? {}, properties);
    for (const [name, { seq }] of this.#own) {
      if (seq > ack) continue;
      this.#own.delete(name);
      names.add(name);
    }
    this.#changed([...names].filter((name) => name in this.form.controls));
  }

  // The form as a whole, as the server has it now.
  takeWhole(form) {
    this.#noteElsewhere(form.controls, form.ack ?? 0);
    const isSameShape = JSON.stringify(form.rows) === JSON.stringify(this.form.rows);
    this.form = form;
    this.#seq = Math.max(this.#seq, form.ack ?? 0);
    this.#settle({}, form.ack ?? 0);
    if (isSameShape) this.#changed(Object.keys(form.controls));
    return isSameShape;
  }

  // The server has begun anew and made the form again: what `other` held of its user's is said once more.
  recover(other, isAll) {
    for (const [name, value] of other.#touched) {
      const control = this.form.controls[name];
      if (!control || (!(valueOf[control.kind] in control) && value === undefined)) continue;
      if (isAll || other.#own.has(name)) this.#put(name, "change", value);
    }
    this.flush();
  }

  close() {
    clearTimeout(this.#timer);
    this.#isClosed = true;
  }
}
