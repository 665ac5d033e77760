// The system's own commands, as it put them on bars and menus.

function* allControls(controls) {
  for (const control of controls ?? []) {
    yield control;
    yield* allControls(control.controls);
  }
}

export const barNamed = (state, name) => state.bars?.find((bar) => bar.name === name);

// A command by its id, wherever it stands; undefined without it.
export function commandOf(state, id) {
  for (const bar of state.bars ?? [])
    for (const control of allControls(bar.controls)) if (control.id === id) return control;
  return undefined;
}

// Everything that the system put on its menu, or on its bar where it has none.
export function systemItems(desk, left) {
  const menus = barNamed(desk.state, "Menu Bar")?.controls.filter(({ type }) => type === "popup") ?? [];
  const controls = menus.length > 0 ? menus.flatMap((menu) => menu.controls) : barNamed(desk.state, "Lumenfold")?.controls;
  return menuItems(desk, controls, left);
}

// Of the controls of a bar, the items of a menu; `left` names those that stand elsewhere.
export function menuItems(desk, controls, left = new Set()) {
  return (controls ?? [])
    .filter(({ id }) => !left.has(id))
    .map((control) => {
      const item = {
        text: control.caption,
        group: control.group,
        enabled: control.enabled,
        reason: control.tip,
        keys: control.keys,
      };
      if (control.type === "popup") return { ...item, items: menuItems(desk, control.controls, left) };
      if (control.type === "combo") {
        const choices = (control.items ?? []).map((text, i) => ({
          text,
          checked: control.selected === i + 1,
          isRadio: true,
          run: () => desk.press(control.id, i + 1),
        }));
        return { ...item, items: choices };
      }
      return { ...item, checked: control.pressed ? true : undefined, run: () => desk.press(control.id) };
    })
    .filter(({ items }) => !items || items.length > 0);
}
