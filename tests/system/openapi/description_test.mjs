// Holds the description of the control interface against the rules of OpenAPI 3.1, and every request and answer that
// the tests of the interface have written down against the description.
//
//     node description_test.mjs OPENAPI_FILE FOLDER_OF_EXCHANGES
import fs from "node:fs";
import path from "node:path";
import { Validator } from "@seriousme/openapi-schema-validator";
import Ajv from "ajv/dist/2020.js";

const [file, folder] = process.argv.slice(2);
const description = JSON.parse(fs.readFileSync(file, "utf8"));
const failures = [];
const checked = new Set();
let count = 0;

const verdict = await new Validator().validate(JSON.parse(JSON.stringify(description)));
if (!verdict.valid) {
    failures.push(`the file itself: ${JSON.stringify(verdict.errors)}`);
}

const ajv = new Ajv.default({ strict: false, validateFormats: false });
ajv.addSchema(description, "description");
const pointer = (...parts) => "description#/" + parts.map((part) => encodeURIComponent(part.replaceAll("~", "~0").replaceAll("/", "~1"))).join("/");

const paths = Object.keys(description.paths).map((template) => ({
    template,
    form: new RegExp("^" + template.replaceAll(/\{\w+\}/g, "[^/]+") + "$"),
}));

function check(place, schema, text, what, isLines) {
    const isText = schema.includes("text~1plain") || schema.includes("svg%2Bxml");
    for (const part of isLines ? text.split("\n").filter(Boolean) : [text]) {
        const validate = ajv.getSchema(schema);
        if (!validate) {
            failures.push(`${place}: the description has no schema for ${what}`);
        } else if (!validate(isText ? part : JSON.parse(part))) {
            failures.push(`${place}: ${what} ${part.slice(0, 300)} is not as described: ${ajv.errorsText(validate.errors)}`);
        }
    }
}

// The events of a stream as objects; a comment is none.
function checkEvents(place, schema, text) {
    for (const event of text.split("\n\n").filter((part) => part && !part.startsWith(":"))) {
        const lines = event.split("\n").map((line) => line.split(/: (.*)/s).slice(0, 2));
        const { data, ...rest } = Object.fromEntries(lines);
        check(place, schema, JSON.stringify({ ...rest, data: JSON.parse(data) }), "the event", false);
    }
}

function checkExchange(place, { method, target, request, status, type, answer }) {
    const found = paths.find(({ form }) => form.test(target.split("?")[0]));
    const operation = found && description.paths[found.template][method.toLowerCase()];
    if (!operation) {
        if (![404, 405].includes(status)) {
            failures.push(`${place}: ${method} ${target} is not described and was answered with ${status}`);
        }
        return;
    }
    count += 1;
    const steps = ["paths", found.template, method.toLowerCase()];
    for (const name of new URLSearchParams(target.split("?")[1] ?? "").keys()) {
        if (status < 300 && !(operation.parameters ?? []).some((parameter) => parameter.name === name)) {
            failures.push(`${place}: ${name} is not described for ${method} ${target}`);
        }
    }
    if (request && status < 300) {
        check(place, pointer(...steps, "requestBody", "content", "application/json", "schema"), request, "the request", false);
    }
    const response = operation.responses[status];
    if (!response) {
        failures.push(`${place}: ${method} ${target} was answered with ${status}, which is not described`);
        return;
    }
    const schema = response.$ref
        ? pointer("components", "responses", response.$ref.split("/").pop(), "content", type, "schema")
        : pointer(...steps, "responses", String(status), "content", type, "schema");
    const event = operation.responses[status].content?.[type]?.["x-event"];
    if (event) {
        checkEvents(place, pointer("components", "schemas", event.$ref.split("/").pop()), answer);
    } else {
        check(place, schema, answer, "the answer", type.endsWith("ndjson"));
    }
    if (status < 300) {
        checked.add(`${method} ${found.template}`);
    }
}

for (const name of fs.existsSync(folder) ? fs.readdirSync(folder) : []) {
    const lines = fs.readFileSync(path.join(folder, name), "utf8").split("\n").filter(Boolean);
    lines.forEach((line, index) => checkExchange(`${name}, request ${index + 1}`, JSON.parse(line)));
}

for (const { template } of paths) {
    for (const method of Object.keys(description.paths[template]).filter((key) => key !== "parameters")) {
        if (!checked.has(`${method.toUpperCase()} ${template}`)) {
            failures.push(`no test has had ${method.toUpperCase()} ${template} answered`);
        }
    }
}
if (failures.length > 0) {
    console.error(failures.join("\n"));
    process.exit(1);
}
console.log(`${count} exchanges are as described`);
