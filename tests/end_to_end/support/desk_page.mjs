// The page of a desk in a browser, on its first slide.

import { openScreen } from "./browser.mjs";
import { until } from "./wait.mjs";

// {page, stage} and its shapes. `options` are those of the browser's context.
export async function openDeskPage(t, desk, options) {
  const page = await openScreen(t, desk.url, options);
  const stage = page.getByRole("listbox", { name: "Slide 1", exact: true });
  await stage.waitFor();
  const shape = (name) => stage.getByRole("option", { name, exact: true });
  const linkOf = (name) => shape(name).locator(".badge").textContent();
  const saysOf = (name) => shape(name).getAttribute("aria-description");
  return {
    ...{ page, stage, shape, linkOf, saysOf },
    button: (name) => page.getByRole("button", { name, exact: true }),
    isLinked: (name, link) => until(`${name} linked to ${link}`, async () => (await linkOf(name)) === link),
    sees: (name, text) => until(`${name} to show ${text}`, async () => (await saysOf(name)).includes(text)),
  };
}
