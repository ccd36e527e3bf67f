"use strict";
const js = require("@eslint/js");

module.exports = [
    js.configs.recommended,
    {
        languageOptions: { ecmaVersion: 2022, sourceType: "script", globals: { document: "readonly", location: "writable", addEventListener: "readonly" } },
        rules: { eqeqeq: "error", "no-eval": "error", "no-implied-eval": "error", "no-var": "error", "prefer-const": "error", strict: ["error", "function"],
                 "no-restricted-properties": ["error", ...["innerHTML", "outerHTML", "insertAdjacentHTML"].map(property => ({ property })),
                                              { object: "document", property: "write" }] },
    },
];
