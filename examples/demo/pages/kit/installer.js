// @ts-check
// The page kit: runs the installer's commands, reads their answers and follows the install tool.
//
//   <script src="installer.js" data-command="command.html" data-report="report" data-progress="progress"></script>
//
// The three URLs are relative to this script; those above are the defaults.

/**
 * The last report of the install tool, as stored by the site; empty before the first one.
 * @typedef {{event?: string, result?: string, percent?: string, message?: string, version?: string}} ToolReport
 * `silent`: no change for `patience` seconds; `unreachable`: the site does not answer.
 * @typedef {'waiting' | 'working' | 'silent' | 'unreachable' | 'finished'} State
 */

const installer = (() => {
    const script = /** @type {HTMLScriptElement} */ (document.currentScript);
    /** @type {(name: string, standard: string) => string} */
    const setting = (name, standard) => new URL(script.dataset[name] ?? standard, script.src).href;
    const commandUrl = setting('command', 'command.html');
    const reportUrl = setting('report', 'report');
    const progressUrl = setting('progress', 'progress');

    // The installer passes these to the tool through a shell, which must not find special characters in them.
    const toolAddresses = ['reportUrl', 'configTemplateUrl', 'installerUrl'];

    /** @param {string} text */
    function decoded(text) {
        try {
            return decodeURIComponent(text);
        } catch {
            return text;
        }
    }

    /**
     * The values of a query. A plus sign is not a blank, as the installer does not escape it.
     * @param {string} query
     * @returns {Record<string, string>}
     */
    function valuesOf(query) {
        return Object.fromEntries(query.replace(/^\?/, '').split('&').filter(Boolean).map(pair => {
            const [key, ...value] = pair.split('=');
            return [decoded(key), decoded(value.join('='))];
        }));
    }

    /**
     * The absolute URL of a page, given relative to this one, with these values added to its query, escaped once.
     * @param {string} page
     * @param {Record<string, string | undefined>} [values] those that are undefined are left out
     */
    function address(page, values = {}) {
        const url = new URL(page, location.href);
        const pairs = Object.entries(values).filter(([, value]) => value !== undefined);
        const query = pairs.map(([key, value]) => `${encodeURIComponent(key)}=${encodeURIComponent(value ?? '')}`);
        url.search = [url.search.slice(1), ...query].filter(Boolean).join('&');
        return url.href;
    }

    /**
     * Makes the installer run a command, by navigating to the command page. Values whose names end in Url are relative
     * to this page. The command page reads two values that the installer ignores: `nextUrl`, the next page when the
     * command has no answer, and `patience`, how many seconds to wait for one.
     * @param {string} command
     * @param {Record<string, string | undefined>} [values] without `callbackUrl` the answer comes to this page
     * @throws {Error} when a URL for the install tool has a character that is special in a shell
     */
    function run(command, values = {}) {
        const page = location.origin + location.pathname;
        /** @type {Record<string, string | undefined>} */
        const all = {callbackUrl: page, backUrl: location.href, ...values};
        for (const [key, value] of Object.entries(all)) {
            const url = key.endsWith('Url') && value ? address(value) : value;
            if (toolAddresses.includes(key) && /[^\w.~:/?=&-]/.test(url ?? '')) {
                throw new Error(`${key} '${url}' must consist of letters, digits and - _ . ~ : / ? = &`);
            }
            all[key] = url;
        }
        location.href = address(commandUrl, {command, ...all});
    }

    /**
     * Starts the install tool. When it has reported for the first time, the command page goes to `nextUrl` with
     * the value `job` added, for `follow`.
     * @param {'install' | 'upgrade' | 'repair' | 'uninstall'} command
     * @param {{nextUrl: string, configTemplateUrl?: string, installerUrl?: string, patience?: string}} values
     */
    function startTool(command, values) {
        const job = [...crypto.getRandomValues(new Uint8Array(8))].map(byte => byte.toString(16)).join('');
        run(command, {...values, callbackUrl: undefined, job, reportUrl: address(reportUrl, {job}),
                      nextUrl: address(values.nextUrl, {job})});
    }

    /**
     * Follows a job until the tool has finished. Calls `heard` at each new report and each new state.
     * @param {string} job
     * @param {(report: ToolReport, state: State) => void} heard
     * @param {number} [patience] seconds without a change after which the state is `silent`
     */
    async function follow(job, heard, patience = 60) {
        let changed = Date.now(), last = '{}', lastState = '';
        while (lastState !== 'finished') {
            const answer = await read(address(progressUrl, {job}));
            const text = answer ?? last;
            const isNew = text !== last;
            const report = /** @type {ToolReport} */ (JSON.parse(text));
            changed = isNew ? Date.now() : changed;
            last = text;
            const isSilent = Date.now() - changed > patience * 1000;
            /** @type {State} */
            const state = report.event === 'finished' ? 'finished' : answer === undefined ? 'unreachable'
                : isSilent ? 'silent' : report.event ? 'working' : 'waiting';
            if (isNew || state !== lastState) {
                heard(report, state);
            }
            lastState = state;
            await new Promise(resolve => setTimeout(resolve, 500));
        }
    }

    /**
     * The JSON text at a URL; undefined when the site does not return one.
     * @param {string} url
     */
    async function read(url) {
        const limit = new AbortController();
        const timer = setTimeout(() => limit.abort(), 10000);
        try {
            const response = await fetch(url, {cache: 'no-store', signal: limit.signal});
            return response.ok ? JSON.stringify(await response.json() ?? {}) : undefined;
        } catch {
            return undefined;
        } finally {
            clearTimeout(timer);
        }
    }

    /**
     * Waits in the page at the command URL, after it has loaded and the installer runs the command.
     * @param {() => void} silent called when there is no answer in time; shows "Try again" and a way back
     */
    function commandPage(silent) {
        const {job, nextUrl, patience = job ? '60' : '10'} = received;
        const leave = () => location.replace(ownAddress(nextUrl));
        addEventListener('load', () => {
            if (job) {
                follow(job, (report, state) => report.event ? leave() : state === 'waiting' || silent(), Number(patience));
            } else if (nextUrl) {
                setTimeout(leave, 1000);
            } else {
                setTimeout(silent, Number(patience) * 1000);
            }
        });
    }

    /**
     * The URL if it is on this site, else the directory of the kit: a query must not navigate the window elsewhere.
     * @param {string | undefined} url
     */
    function ownAddress(url) {
        const whole = new URL(url || '.', script.src);
        return whole.origin === location.origin ? whole.href : new URL('.', script.src).href;
    }

    const received = valuesOf(location.search);
    if (received.os !== undefined && received.lang !== undefined) {
        sessionStorage.setItem('told', location.search);
    }
    const told = valuesOf(sessionStorage.getItem('told') ?? '');
    told.os = decoded(told.os ?? '');  // it is escaped twice

    return {
        /** The values of this page's query. */
        received,
        /** The first page's values, on every page after it: `agentId`, `version`, `os`, `lang` and more. */
        told,
        /** The command that this page is the answer to, in lower case; undefined on other pages. */
        answered: received.event === 'finished' && received.pid ? received.action?.toLowerCase() : undefined,
        address, run, startTool, follow, commandPage, ownAddress, valuesOf,
    };
})();
