// What the page of the report and its tests are held to.
import { createRequire } from "node:module";
import { join } from "node:path";

const installed = createRequire(join(process.env.NODE_PACKAGES, "/"));
const globals = installed("globals");
const rules = {
  ...installed("@eslint/js").configs.recommended.rules,
  "eqeqeq": "error",
  "no-shadow": "error",
  "no-use-before-define": ["error", { functions: false, variables: false }],
  "no-var": "error",
  "prefer-const": "error",
};

export default [
  { files: ["host/report/page/*.js"], languageOptions: { globals: globals.browser },
    rules: { ...rules, "max-len": ["error", { code: 120 }] } },
  { files: ["tests/Host/report/*.mjs"],
    languageOptions: { globals: { ...globals.node, ...globals.browser, data: "readonly" } }, rules },
];
